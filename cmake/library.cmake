# quarvo_library(NAME LIBRARY ...) makes the library quarvo_NAME of the sources of the current folder, on top of the
# libraries named. It publishes the folder and what those publish, and nothing else, so that an include of a folder that
# does not lie below it does not compile. Programs of the folder stay out.
function(quarvo_library name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/(write-kernels|quarvo|companion-main|quarvo-convert|quarvo-report|quarvo-scan|report-run|report-template)\\.cpp$")
  if(sources)
    add_library(quarvo_${name} STATIC ${sources})
    target_include_directories(quarvo_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(quarvo_${name} PUBLIC ${ARGN})
  else()
    add_library(quarvo_${name} INTERFACE)
    target_include_directories(quarvo_${name} INTERFACE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(quarvo_${name} INTERFACE ${ARGN})
  endif()
  set_property(GLOBAL APPEND PROPERTY QUARVO_LIBRARIES quarvo_${name})
  set_property(GLOBAL PROPERTY quarvo_${name}_FOLDER ${CMAKE_CURRENT_SOURCE_DIR})
endfunction()

# quarvo_executable(NAME SOURCE ...) makes a program that users run, where they find it: at the top of the build.
function(quarvo_executable name)
  add_executable(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
endfunction()
