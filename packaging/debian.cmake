# The packages of Debian 12: one for each component, which packaging/make-packages makes.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lineweir)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT
    "The Lineweir maintainers <maintainers@lineweir.example>")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${CPACK_PACKAGE_CONTACT})
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION comm)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES ON)
# Files go to places outside of the prefix too.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/same_times.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL server tools)
if(LINEWEIR_DESKTOP)
  list(APPEND CPACK_COMPONENTS_ALL console)
endif()

# Letters and windows are looked for only when the program runs, so that no linker knows of them.
set(CPACK_DEBIAN_CONSOLE_PACKAGE_NAME lineweir)
set(CPACK_DEBIAN_CONSOLE_PACKAGE_DEPENDS "fonts-dejavu-core, qt6-qpa-plugins")
set(CPACK_DEBIAN_CONSOLE_PACKAGE_RECOMMENDS "fonts-dejavu-extra")
set(CPACK_DEBIAN_CONSOLE_PACKAGE_SUGGESTS "lineweir-server, lineweir-tools")
set(CPACK_COMPONENT_CONSOLE_DESCRIPTION
    "telephone console of a radio talk show
A screener answers callers, types who they are and marks them ready, and a
host takes them to air on two hybrids. Every line is a row that tells its
state by shape, word and colour, and every call is logged.

It works alone on an interface box at a serial port, or at a server with
many other seats.")

set(CPACK_DEBIAN_SERVER_PACKAGE_NAME lineweir-server)
set(CPACK_DEBIAN_SERVER_PACKAGE_DEPENDS "systemd | systemd-standalone-sysusers | systemd-sysusers")
set(CPACK_DEBIAN_SERVER_PACKAGE_RECOMMENDS "default-dbus-system-bus | dbus-system-bus")
set(CPACK_DEBIAN_SERVER_PACKAGE_SUGGESTS "postgresql, lineweir-tools")
set(CPACK_DEBIAN_SERVER_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/server/conffiles
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/server/postinst
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/server/prerm
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/server/postrm)
set(CPACK_COMPONENT_SERVER_DESCRIPTION
    "server of a talk show's telephone lines
It owns the lines of several studios, tells every console the same, and keeps
users with rights, calls and an audit, in a file or in PostgreSQL. The lines
are those of an interface box, or simulated.

The package holds the administrator's tool too.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME lineweir-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "lineweir, lineweir-server")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
    "simulated studio to try a talk show's console with
An interface box with callers and a switch console on pseudo-terminals, a
simulated screener or host at a server, and the console without a window,
which a script drives in virtual time.")

include(CPack)
