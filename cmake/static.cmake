# Programs without shared libraries, for machines whose libraries are too old or unknown:
#
#   cmake --preset static -DQUARVO_HIGHWAY_SOURCE=DIR -DQUARVO_TBB_SOURCE=DIR
#
# Debian's packages hold every library as an archive but those of Highway and oneTBB, which are therefore compiled here
# from their sources. scripts/build-static fetches them and does the whole.
option(QUARVO_STATIC "Link the programs statically" OFF)
if(QUARVO_STATIC)
  set(CMAKE_FIND_LIBRARY_SUFFIXES .a)
  add_link_options(-static)
endif()
