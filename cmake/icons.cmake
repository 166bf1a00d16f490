# The program's icon in all sizes that desktops ask for, made from one drawing, for the window and
# for the package.

find_program(RSVG_CONVERT rsvg-convert)
if(NOT RSVG_CONVERT)
  message(FATAL_ERROR "rsvg-convert makes the icons, and isn't here: apt-get install librsvg2-bin")
endif()

set(LINEWEIR_ICON_DRAWING ${CMAKE_SOURCE_DIR}/packaging/icon/lineweir.svg)
set(LINEWEIR_ICON_SIZES 16 22 24 32 48 64 128 256 512)
# Laid out as a theme's folder is.
set(LINEWEIR_ICON_FOLDER ${CMAKE_BINARY_DIR}/icons/hicolor)
set(LINEWEIR_ICONS)
foreach(size IN LISTS LINEWEIR_ICON_SIZES)
  set(folder ${LINEWEIR_ICON_FOLDER}/${size}x${size}/apps)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(
    OUTPUT ${folder}/lineweir.png
    COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} --output ${folder}/lineweir.png
            ${LINEWEIR_ICON_DRAWING}
    DEPENDS ${LINEWEIR_ICON_DRAWING}
    COMMENT "Drawing the icon of ${size} dots")
  list(APPEND LINEWEIR_ICONS ${folder}/lineweir.png)
endforeach()
add_custom_target(lineweir_icons ALL DEPENDS ${LINEWEIR_ICONS})
