# What there is to try the console and the server with: simulated equipment, people, a scripted console.

set(tools lineweir-desk lineweir-driver lineweir-studio)
if(LINEWEIR_DESKTOP)
  list(APPEND tools lineweir-seat)
endif()

install(TARGETS ${tools} RUNTIME COMPONENT tools)
foreach(tool IN LISTS tools)
  lineweir_manual_page(tools ${tool}.1)
  install(FILES completions/lineweir-tools DESTINATION ${completions} RENAME ${tool} COMPONENT tools)
endforeach()
lineweir_package_papers(tools lineweir-tools)
