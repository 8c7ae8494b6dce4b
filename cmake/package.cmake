# The Debian package, made by `cpack` in the build directory or by scripts/package.
#
# A package wants some texts compressed. gzip is on every Debian system; without it only the package is out of reach.
find_program(QUARVO_GZIP gzip)
mark_as_advanced(QUARVO_GZIP)
if(NOT QUARVO_GZIP)
  message(STATUS "gzip was not found: no Debian package")
  return()
endif()

function(compress source target)
  add_custom_command(OUTPUT ${target} COMMAND ${QUARVO_GZIP} -9nc ${source} > ${target} DEPENDS ${source} VERBATIM)
  set(compressed ${compressed} ${target} PARENT_SCOPE)
endfunction()

file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/packaging)
compress(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_BINARY_DIR}/packaging/changelog.gz)
compress(${PROJECT_SOURCE_DIR}/packaging/changelog ${PROJECT_BINARY_DIR}/packaging/changelog.Debian.gz)
foreach(command IN LISTS QUARVO_COMMANDS)
  compress(${QUARVO_GENERATED_DIR}/${command}.1 ${QUARVO_GENERATED_DIR}/${command}.1.gz)
endforeach()
add_custom_target(quarvo_compressed ALL DEPENDS ${compressed})
add_dependencies(quarvo_compressed quarvo_generated)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quarvo)
set(CPACK_PACKAGE_VENDOR "The Quarvo project")
set(CPACK_PACKAGE_CONTACT ${QUARVO_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "finds tandem repeats in DNA sequences")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Quarvo searches FASTA files for tandem repeats: microsatellites and
minisatellites, perfect or with mismatches, inserted and deleted symbols and
short runs of N. It writes every repeat that passes the thresholds for score,
length and perfection, as text with alignments, as GFF, as a table or as FASTA,
and the sequences with their repeats masked. quarvo-convert turns the results
into BED, GFF3, JSON lines and summaries.
.
The search is exhaustive: the same input and options give the same results on
every machine. Vector code is chosen for the processor at run time.")
set(CPACK_DEBIAN_PACKAGE_RELEASE ${QUARVO_PACKAGE_REVISION})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)

# One package of the parts of cmake/install.cmake that a Debian system wants.
set(CPACK_COMPONENTS_ALL program debian)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_COMPONENT_DEBIAN_DISABLED OFF)
include(CPack)
