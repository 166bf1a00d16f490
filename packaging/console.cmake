# The console with what a desktop shows of it.

install(TARGETS lineweir RUNTIME COMPONENT console)
install(PROGRAMS desktop/start-console
        DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/lineweir COMPONENT console)
install(FILES desktop/org.lineweir.Console.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT console)
install(FILES desktop/org.lineweir.Console.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT console)
install(DIRECTORY ${CMAKE_BINARY_DIR}/icons/hicolor
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons COMPONENT console
        FILES_MATCHING PATTERN "*.png")
install(FILES icon/lineweir.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT console)

# The program that paints them writes them where it is installed, so that a station's own stay.
install(
  CODE "execute_process(
          COMMAND $<TARGET_FILE:lineweir-backgrounds>
                  \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/lineweir/Vesgraph
          COMMAND_ERROR_IS_FATAL ANY)"
  COMPONENT console)

lineweir_manual_page(console lineweir.1)
install(FILES completions/lineweir DESTINATION ${completions} COMPONENT console)
lineweir_package_papers(console lineweir)
