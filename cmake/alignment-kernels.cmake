# The alignment programs of the default scoring as machine code: a program of the build writes them as C++, one file for
# each unit length (src/fast/alignment-kernels.h). Adds what it wrote to quarvo_core.

set(QUARVO_LONGEST_KERNEL 20 CACHE STRING "Longest unit whose alignment program is compiled; takes time to build")
mark_as_advanced(QUARVO_LONGEST_KERNEL)
set(kernel_directory ${PROJECT_BINARY_DIR}/kernels)
set(kernel_sources ${kernel_directory}/alignment-kernel-table.cpp)
foreach(L RANGE 1 ${QUARVO_LONGEST_KERNEL})
  list(APPEND kernel_sources ${kernel_directory}/alignment-kernel-${L}.cpp)
endforeach()
file(MAKE_DIRECTORY ${kernel_directory})

add_executable(write-kernels
  ${PROJECT_SOURCE_DIR}/src/fast/kernels/write-kernels.cpp
  ${PROJECT_SOURCE_DIR}/src/fast/alignment-program.cpp)
add_custom_command(
  OUTPUT ${kernel_sources}
  COMMAND write-kernels ${QUARVO_LONGEST_KERNEL} ${kernel_directory}
  DEPENDS write-kernels
  COMMENT "Writing the alignment programs of the default scoring")

target_sources(quarvo_core PRIVATE ${kernel_sources})
# foreach_target.h includes each of them again by its name.
set_source_files_properties(${kernel_sources} PROPERTIES INCLUDE_DIRECTORIES ${kernel_directory})
