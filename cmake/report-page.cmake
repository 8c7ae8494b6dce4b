# The page of quarvo-report, which is bundled from web/ by npm and linked into the program. Without Node.js and npm, or
# without a way to the packages, the page that the sources of a release hold is taken. Without that one the program is
# left out and everything else is built.
set(QUARVO_BUILD_REPORT AUTO CACHE STRING "Build quarvo-report: ON, OFF, or AUTO for when there is a way to its page")
set_property(CACHE QUARVO_BUILD_REPORT PROPERTY STRINGS AUTO ON OFF)
set(QUARVO_REPORT_PAGE "" CACHE FILEPATH "The page of quarvo-report, bundled before, to be taken instead of asking npm")
mark_as_advanced(QUARVO_REPORT_PAGE)

# Sets quarvo_report_obstacle to why npm cannot bundle the page; empty when it can.
function(quarvo_find_npm_obstacle)
  set(quarvo_report_obstacle "" PARENT_SCOPE)
  find_program(QUARVO_NODE NAMES node nodejs DOC "Node.js 18 or later, for quarvo-report")
  find_program(QUARVO_NPM npm DOC "npm, for quarvo-report")
  mark_as_advanced(QUARVO_NODE QUARVO_NPM)
  if(NOT QUARVO_NODE OR NOT QUARVO_NPM)
    set(quarvo_report_obstacle "Node.js or npm was not found" PARENT_SCOPE)
    return()
  endif()
  execute_process(COMMAND ${QUARVO_NODE} --version OUTPUT_VARIABLE version OUTPUT_STRIP_TRAILING_WHITESPACE)
  string(REGEX REPLACE "^v" "" version "${version}")
  if(version VERSION_LESS 18)
    set(quarvo_report_obstacle "Node.js ${version} is older than 18" PARENT_SCOPE)
  endif()
endfunction()

# Brings the packages of the lock file into the build directory, once for each lock file. They are fetched when the
# build is configured, so that a machine without a network builds the rest.
function(quarvo_install_web_packages directory)
  file(SHA256 ${PROJECT_SOURCE_DIR}/web/package-lock.json wanted)
  set(stamp ${directory}/installed.sha256)
  if(EXISTS ${stamp})
    file(READ ${stamp} installed)
    if(installed STREQUAL wanted)
      return()
    endif()
  endif()
  message(STATUS "Installing the packages of the report page: npm ci")
  foreach(name IN ITEMS package.json package-lock.json .npmrc)
    configure_file(${PROJECT_SOURCE_DIR}/web/${name} ${directory}/${name} COPYONLY)
  endforeach()
  execute_process(COMMAND ${QUARVO_NPM} ci --ignore-scripts --fetch-retry-mintimeout=1000 --fetch-retry-maxtimeout=5000
    WORKING_DIRECTORY ${directory}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(status EQUAL 0)
    file(WRITE ${stamp} ${wanted})
  else()
    set(quarvo_report_obstacle "npm ci failed:\n${output}" PARENT_SCOPE)
  endif()
endfunction()

# Adds the command that bundles the page.
function(quarvo_bundle_report_page directory page)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/web/src/*)
  list(FILTER sources EXCLUDE REGEX "/report-data\\.ts$")  # made by contract.mjs
  set(tools build.mjs contract.mjs report-data.schema.json tsconfig.json)
  list(TRANSFORM tools PREPEND ${PROJECT_SOURCE_DIR}/web/)
  list(APPEND tools ${PROJECT_SOURCE_DIR}/LICENSE)
  add_custom_command(OUTPUT ${page}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${tools} ${directory}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${directory}/src
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/web/src ${directory}/src
    COMMAND ${QUARVO_NODE} ${directory}/build.mjs ${page}
    DEPENDS ${sources} ${tools} ${PROJECT_SOURCE_DIR}/web/package-lock.json
    COMMENT "Bundling the report page"
    VERBATIM)
  add_custom_target(quarvo_report_page DEPENDS ${page})
endfunction()

# Sets quarvo_report_template to the page, wherever it comes from, or else quarvo_report_obstacle to why there is none.
macro(quarvo_find_report_page)
  set(quarvo_shipped_page ${PROJECT_SOURCE_DIR}/bundled/report-template.html)
  set(quarvo_web_build ${PROJECT_BINARY_DIR}/web)
  set(quarvo_report_obstacle "")
  if(NOT QUARVO_BUILD_REPORT)
    set(quarvo_report_obstacle "QUARVO_BUILD_REPORT is ${QUARVO_BUILD_REPORT}")
  elseif(QUARVO_REPORT_PAGE)
    set(quarvo_report_template ${QUARVO_REPORT_PAGE})
  else()
    quarvo_find_npm_obstacle()
    if(NOT quarvo_report_obstacle)
      quarvo_install_web_packages(${quarvo_web_build})
    endif()
    if(NOT quarvo_report_obstacle)
      set(quarvo_report_template ${quarvo_web_build}/report-template.html)
      quarvo_bundle_report_page(${quarvo_web_build} ${quarvo_report_template})
    elseif(EXISTS ${quarvo_shipped_page})
      message(STATUS "quarvo-report gets the page of the release: ${quarvo_report_obstacle}")
      set(quarvo_report_template ${quarvo_shipped_page})
      set(quarvo_report_obstacle "")
    endif()
  endif()
endmacro()

quarvo_find_report_page()
if(quarvo_report_obstacle)
  if(QUARVO_BUILD_REPORT STREQUAL "ON")
    message(FATAL_ERROR "quarvo-report cannot be built: ${quarvo_report_obstacle}")
  endif()
  message(STATUS "quarvo-report is left out: ${quarvo_report_obstacle}")
  return()
endif()
