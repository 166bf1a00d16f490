# The server, its administrator's tool, and what the service manager and the bus know of them.

install(TARGETS lineweir-server lineweir-admin RUNTIME COMPONENT server)
# A station changes it, and finds an unchanged one beside the handbook.
install(FILES server.toml DESTINATION ${CMAKE_INSTALL_FULL_SYSCONFDIR}/lineweir COMPONENT server)
install(FILES server.toml ${CMAKE_SOURCE_DIR}/docs/examples/watch_studio.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/lineweir-server/examples COMPONENT server)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/src/platform/qt/dbus
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/lineweir-server/examples COMPONENT server
        FILES_MATCHING PATTERN "*.xml")
foreach(page docs/server.md docs/protocol.md docs/packages.md docs/security.md SECURITY.md)
  lineweir_installed_page(server lineweir-server ${CMAKE_SOURCE_DIR}/${page})
endforeach()

# Where Debian 12 has its units.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(unit_folder /lib/systemd/system)
else()
  set(unit_folder lib/systemd/system)
endif()
install(FILES lineweir-server.service DESTINATION ${unit_folder} COMPONENT server)
install(FILES lineweir.sysusers DESTINATION lib/sysusers.d RENAME lineweir.conf COMPONENT server)
install(FILES dbus/quorlink.Server.conf
        DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/system.d COMPONENT server)
install(FILES dbus/quorlink.Server.service
        DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/system-services COMPONENT server)

lineweir_manual_page(server lineweir-server.8)
lineweir_manual_page(server lineweir-admin.8)
lineweir_manual_page(server lineweir-server.toml.5)
install(FILES completions/lineweir-server completions/lineweir-admin
        DESTINATION ${completions} COMPONENT server)
lineweir_package_papers(server lineweir-server)
