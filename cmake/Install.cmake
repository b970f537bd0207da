# What an installation consists of, and the Debian package of it.

include(GNUInstallDirs)

foreach(program quillon generator-sim quillon-scenario quillon-replay)
    if(TARGET ${program})
        install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
        install(FILES packaging/${program}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    endif()
endforeach()

set(shared ${CMAKE_INSTALL_DATADIR})
if(TARGET quillon)
    install(FILES packaging/quillon.desktop DESTINATION ${shared}/applications)
    install(FILES packaging/quillon.svg DESTINATION ${shared}/icons/hicolor/scalable/apps)
endif()
install(DIRECTORY samples/ DESTINATION ${shared}/quillon/samples)
install(FILES packaging/70-quillon-serial.rules DESTINATION ${shared}/quillon/samples)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(changelog ${PROJECT_SOURCE_DIR}/packaging/changelog)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
file(STRINGS ${changelog} newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^quillon \\(([0-9.]+)-([0-9]+)\\)" OR NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
    message(FATAL_ERROR "packaging/changelog has no entry for version ${PROJECT_VERSION} at its top.")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_2})
set(CPACK_QUILLON_CHANGELOG ${changelog})
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake)
set(CPACK_PACKAGE_VENDOR "The generator service console authors")
set(CPACK_PACKAGE_CONTACT "The generator service console authors <maintainers@quillon.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Talks to a generator over a serial line, takes it into its service modes, reads
the exposure counters and calibrates positioners. A simulated generator comes
with it.")
include(CPack)
