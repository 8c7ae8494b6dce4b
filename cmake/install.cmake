# What `cmake --install` puts where, below the prefix. The parts:
#
#   program   what every installation has
#   plain     man pages, zsh completions, changelog and licence as an installation by hand wants them
#   debian    the same as a Debian package wants them, with its own changelog and copyright; only CPack installs it
include(GNUInstallDirs)

install(TARGETS ${QUARVO_COMMANDS} COMPONENT program)

foreach(command IN LISTS QUARVO_COMMANDS)
  set(man_page ${QUARVO_GENERATED_DIR}/${command}.1)
  set(zsh_completion ${QUARVO_GENERATED_DIR}/zsh/_${command})
  install(FILES ${QUARVO_GENERATED_DIR}/bash/${command}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT program)
  install(FILES ${man_page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT plain)
  install(FILES ${zsh_completion} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT plain)
  install(FILES ${man_page}.gz DESTINATION share/man/man1 COMPONENT debian EXCLUDE_FROM_ALL OPTIONAL)
  install(FILES ${zsh_completion} DESTINATION share/zsh/vendor-completions COMPONENT debian EXCLUDE_FROM_ALL)
endforeach()

# The documents keep their places to each other, so that the links between them hold.
file(GLOB front_pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CITATION.cff)
file(GLOB pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md ${PROJECT_SOURCE_DIR}/docs/*.png)
install(FILES ${front_pages} DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)
install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT plain)
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT program)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)

install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright DESTINATION share/doc/quarvo COMPONENT debian EXCLUDE_FROM_ALL)
install(
  FILES ${PROJECT_BINARY_DIR}/packaging/changelog.gz ${PROJECT_BINARY_DIR}/packaging/changelog.Debian.gz
  DESTINATION share/doc/quarvo COMPONENT debian EXCLUDE_FROM_ALL OPTIONAL)
