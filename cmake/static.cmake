# A program without shared libraries, for machines whose libraries are too old or unknown:
#
#   cmake --preset static -DQUARVO_HIGHWAY_SOURCE=DIR
#
# Debian's packages hold every library as an archive but that of Highway, which is therefore compiled here from an
# unpacked source package. scripts/build-static fetches it and does the whole.
option(QUARVO_STATIC "Link the program statically" OFF)
set(QUARVO_HIGHWAY_SOURCE "" CACHE PATH "Sources of Highway, for QUARVO_STATIC")

if(QUARVO_STATIC)
  if(NOT EXISTS ${QUARVO_HIGHWAY_SOURCE}/hwy/targets.cc)
    message(FATAL_ERROR
      "A static program needs the sources of Highway. Unpack them (apt-get source highway) and pass their directory: "
      "-DQUARVO_HIGHWAY_SOURCE=DIR. scripts/build-static does both.")
  endif()
  set(CMAKE_FIND_LIBRARY_SUFFIXES .a)
  add_link_options(-static)

  file(GLOB highway_sources ${QUARVO_HIGHWAY_SOURCE}/hwy/*.cc)
  list(FILTER highway_sources EXCLUDE REGEX "_test\\.cc$")
  add_library(quarvo_highway STATIC ${highway_sources})
  target_include_directories(quarvo_highway SYSTEM PUBLIC ${QUARVO_HIGHWAY_SOURCE})
  target_compile_options(quarvo_highway PRIVATE -w)
endif()
