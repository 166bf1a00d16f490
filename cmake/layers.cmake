# A layer is one target that shows only its own folders to those that link it.
#
# Headers are included by folder name ("elements/label.h"). Each layer gets an include root that
# holds links to its own folders and nothing else, so an include that goes against the direction
# of the layers is a file that doesn't exist.

function(lineweir_layer target)
  cmake_parse_arguments(LAYER "" "" "FOLDERS;LINKS" ${ARGN})

  set(root ${CMAKE_BINARY_DIR}/include/${target})
  # Made anew, so that a folder which has left the layer can't be included from an old build tree.
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root})
  set(sources)
  foreach(folder IN LISTS LAYER_FOLDERS)
    get_filename_component(parent ${folder} DIRECTORY)
    file(MAKE_DIRECTORY ${root}/${parent})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
    file(GLOB found CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.cpp)
    list(FILTER found EXCLUDE REGEX "/main\\.cpp$")
    list(APPEND sources ${found})
  endforeach()

  add_library(${target} STATIC ${sources})
  target_include_directories(${target} PUBLIC ${root})
  target_link_libraries(${target} PUBLIC ${LAYER_LINKS})
  # The folders that the layer sees, one a line, for the test of forbidden includes.
  file(
    GENERATE
    OUTPUT ${CMAKE_BINARY_DIR}/layers/${target}
    CONTENT "$<JOIN:$<REMOVE_DUPLICATES:$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>>,\n>\n")
endfunction()

# The platform interfaces share their folder with the services that make them real, so their
# headers are shown one by one.
function(lineweir_interface_layer target)
  cmake_parse_arguments(LAYER "" "FOLDER" "LINKS" ${ARGN})
  set(root ${CMAKE_BINARY_DIR}/include/${target})
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root}/${LAYER_FOLDER})
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${LAYER_FOLDER}/*.h)
  foreach(header IN LISTS headers)
    get_filename_component(name ${header} NAME)
    file(CREATE_LINK ${header} ${root}/${LAYER_FOLDER}/${name} SYMBOLIC)
  endforeach()
  add_library(${target} INTERFACE)
  target_include_directories(${target} INTERFACE ${root})
  target_link_libraries(${target} INTERFACE ${LAYER_LINKS})
endfunction()
