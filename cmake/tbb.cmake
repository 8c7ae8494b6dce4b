# oneTBB: tasks for threads. The target quarvo_tbb is the library of the system (libtbb-dev), or is compiled from its
# sources, those that QUARVO_TBB_SOURCE names or that come with the sources of a release: for static programs, since
# Debian has no archive of it, and for the thread sanitizer, which must see how tasks are handed on. Without either there
# is no such target, and what needs it is left out.
set(QUARVO_TBB_SOURCE "" CACHE PATH "Sources of oneTBB, taken instead of the library of the system")
set(tbb_directory ${QUARVO_TBB_SOURCE})
if(NOT tbb_directory)
  set(tbb_directory ${PROJECT_SOURCE_DIR}/bundled/onetbb)
endif()

if(NOT QUARVO_TBB_SOURCE AND NOT QUARVO_STATIC AND NOT QUARVO_SANITIZE MATCHES "thread")
  find_package(TBB QUIET)
  if(TARGET TBB::tbb)
    add_library(quarvo_tbb INTERFACE)
    target_link_libraries(quarvo_tbb INTERFACE TBB::tbb)
  endif()
elseif(EXISTS ${tbb_directory}/src/tbb/task.cpp)
  message(STATUS "oneTBB is compiled from ${tbb_directory}")
  find_package(Threads REQUIRED)
  file(GLOB tbb_sources ${tbb_directory}/src/tbb/*.cpp)
  add_library(quarvo_tbb STATIC ${tbb_sources})
  target_include_directories(quarvo_tbb SYSTEM PUBLIC ${tbb_directory}/include)
  target_compile_definitions(quarvo_tbb
    PUBLIC __TBB_DYNAMIC_LOAD_ENABLED=0 __TBB_SOURCE_DIRECTLY_INCLUDED=1
    PRIVATE __TBB_BUILD)
  target_compile_options(quarvo_tbb PRIVATE -w)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
    target_compile_options(quarvo_tbb PRIVATE -mrtm -mwaitpkg)
  endif()
  target_link_libraries(quarvo_tbb PUBLIC Threads::Threads ${CMAKE_DL_LIBS})
endif()
