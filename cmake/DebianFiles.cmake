# Run by CPack on the files it is about to pack: puts some of them into the form that Debian asks for.

set(installed ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX})
set(changelog ${installed}/share/doc/${CPACK_PACKAGE_NAME}/changelog.Debian)
file(COPY_FILE ${CPACK_QUILLON_CHANGELOG} ${changelog})
file(CHMOD ${changelog} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(GLOB pages ${installed}/share/man/man*/*)
execute_process(COMMAND gzip -9n ${changelog} ${pages} COMMAND_ERROR_IS_FATAL ANY)
file(GLOB programs ${installed}/bin/*)
execute_process(COMMAND strip --strip-unneeded --remove-section=.comment --remove-section=.note ${programs}
    COMMAND_ERROR_IS_FATAL ANY)
