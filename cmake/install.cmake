# What `cmake --install` puts where, below the prefix.
include(GNUInstallDirs)
set(QUARVO_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/site-functions CACHE STRING "Where completions for zsh go")
mark_as_advanced(QUARVO_ZSH_COMPLETIONS)

install(TARGETS ${QUARVO_COMMANDS})
foreach(command IN LISTS QUARVO_COMMANDS)
  install(FILES ${QUARVO_GENERATED_DIR}/${command}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${QUARVO_GENERATED_DIR}/bash/${command} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${QUARVO_GENERATED_DIR}/zsh/_${command} DESTINATION ${QUARVO_ZSH_COMPLETIONS})
endforeach()

# The workflow, with the configuration to begin with and the profiles. It finds its rules and scripts from where it lies.
install(DIRECTORY workflow config profiles DESTINATION ${CMAKE_INSTALL_DATADIR}/quarvo USE_SOURCE_PERMISSIONS
  PATTERN __pycache__ EXCLUDE)

# The documents keep their places to each other, so that the links between them hold.
file(GLOB pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md ${PROJECT_SOURCE_DIR}/docs/*.png)
install(FILES README.md CITATION.cff CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
