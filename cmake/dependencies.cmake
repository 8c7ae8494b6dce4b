# What the program is built on, gathered in the one target quarvo_dependencies. Each is a Debian package.

# libtclap-dev: the command-line parser, headers only.
find_path(QUARVO_TCLAP_INCLUDE_DIR tclap/CmdLine.h REQUIRED)
mark_as_advanced(QUARVO_TCLAP_INCLUDE_DIR)

include(cmake/highway.cmake)
include(cmake/tbb.cmake)

# zlib1g-dev: compressed input.
find_package(ZLIB REQUIRED)

# nlohmann-json3-dev: what quarvo-convert writes as JSON, headers only.
find_package(nlohmann_json REQUIRED)

# libhts-dev: compressed output of the companions. What its archive stands on, the shared library brings itself.
find_path(QUARVO_HTS_INCLUDE_DIR htslib/bgzf.h REQUIRED)
set(hts_libraries hts)
if(QUARVO_STATIC)
  list(APPEND hts_libraries htscodecs bz2 lzma deflate z)
endif()
add_library(quarvo_hts INTERFACE)
target_include_directories(quarvo_hts SYSTEM INTERFACE ${QUARVO_HTS_INCLUDE_DIR})
foreach(name IN LISTS hts_libraries)
  find_library(QUARVO_${name}_LIBRARY ${name} REQUIRED)
  mark_as_advanced(QUARVO_${name}_LIBRARY)
  target_link_libraries(quarvo_hts INTERFACE ${QUARVO_${name}_LIBRARY})
endforeach()
target_link_libraries(quarvo_hts INTERFACE ZLIB::ZLIB)
mark_as_advanced(QUARVO_HTS_INCLUDE_DIR)

add_library(quarvo_dependencies INTERFACE)
target_include_directories(quarvo_dependencies SYSTEM INTERFACE ${QUARVO_TCLAP_INCLUDE_DIR})
target_compile_definitions(quarvo_dependencies INTERFACE ZLIB_CONST)
target_link_libraries(quarvo_dependencies INTERFACE quarvo_highway ZLIB::ZLIB)

# Vectors of a size that only the processor knows cannot be members of a class; arm64 has NEON beside them.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
  target_compile_definitions(quarvo_dependencies INTERFACE
    "HWY_DISABLED_TARGETS=(HWY_SVE|HWY_SVE2|HWY_SVE_256|HWY_SVE2_128)")
endif()
