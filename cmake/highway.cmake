# Highway: portable vector code, chosen for the processor at run time. The target quarvo_highway is the library of the
# system (libhwy-dev) where that is new enough (its headers alone where they do), or else is compiled from the sources of
# Highway: those that QUARVO_HIGHWAY_SOURCE names, or those that come with the sources of a release.
set(QUARVO_HIGHWAY_SOURCE "" CACHE PATH "Sources of Highway 1.0 or newer, taken instead of the library of the system")
set(bundled_highway ${PROJECT_SOURCE_DIR}/bundled/highway)

if(NOT QUARVO_HIGHWAY_SOURCE AND NOT QUARVO_STATIC)
  find_package(hwy 1.0 CONFIG QUIET)
  if(hwy_FOUND)
    add_library(quarvo_highway INTERFACE)
    if(hwy_VERSION VERSION_LESS 1.1 AND CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
      # src/simd/target-choice.cpp in place of the shared library, which takes long to load. It knows these versions.
      set(QUARVO_CHOOSES_TARGET ON)
      foreach(property INTERFACE_INCLUDE_DIRECTORIES INTERFACE_COMPILE_DEFINITIONS)
        set_property(TARGET quarvo_highway PROPERTY ${property} $<TARGET_PROPERTY:hwy::hwy,${property}>)
      endforeach()
    else()
      target_link_libraries(quarvo_highway INTERFACE hwy::hwy)
    endif()
    return()
  endif()
endif()

set(highway_directory ${QUARVO_HIGHWAY_SOURCE})
if(NOT highway_directory)
  set(highway_directory ${bundled_highway})
endif()
if(NOT EXISTS ${highway_directory}/hwy/targets.cc)
  message(FATAL_ERROR
    "There is no Highway 1.0 or newer here (and a static program needs its sources). Install it (Debian: libhwy-dev), or "
    "unpack its sources (apt-get source highway) and pass their directory: -DQUARVO_HIGHWAY_SOURCE=DIR.")
endif()
message(STATUS "Highway is compiled from ${highway_directory}")
file(GLOB highway_sources ${highway_directory}/hwy/*.cc)
list(FILTER highway_sources EXCLUDE REGEX "_test\\.cc$")
add_library(quarvo_highway STATIC ${highway_sources})
target_include_directories(quarvo_highway SYSTEM PUBLIC ${highway_directory})
target_compile_options(quarvo_highway PRIVATE -w)
