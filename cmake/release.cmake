# The date of the release, from the first entry of the changelog of the Debian package.
set(changelog ${PROJECT_SOURCE_DIR}/debian/changelog)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
file(STRINGS ${changelog} entry LIMIT_COUNT 1 REGEX "^quarvo ")
file(STRINGS ${changelog} trailer LIMIT_COUNT 1 REGEX "^ -- ")

if(NOT entry MATCHES "^quarvo \\(([0-9.]+)-[0-9a-z.]+\\) " OR NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
  message(FATAL_ERROR "${changelog} must begin with an entry for version ${PROJECT_VERSION}, and begins: ${entry}")
endif()

if(NOT trailer MATCHES "^ -- .*>  [A-Z][a-z]+, ([0-9][0-9]) ([A-Z][a-z][a-z]) ([0-9][0-9][0-9][0-9]) ")
  message(FATAL_ERROR "${changelog}: cannot read the date in: ${trailer}")
endif()
set(year ${CMAKE_MATCH_3})
set(day ${CMAKE_MATCH_1})
set(months - Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec)
list(FIND months ${CMAKE_MATCH_2} month)
string(REGEX REPLACE "^(.)$" "0\\1" month ${month})
set(QUARVO_RELEASE_DATE ${year}-${month}-${day})
