# Compiler options that do not change what the program is: warnings, sanitizers, assertions. Included before any target
# is made, so that they hold for the program, its tests and its benchmarks alike.

option(QUARVO_WARNINGS_AS_ERRORS "Let any compiler warning fail the build" ON)
option(QUARVO_FUZZ "Build the fuzzers of tests/fuzz with libFuzzer, which needs clang" OFF)
option(QUARVO_COVERAGE "Count the lines that are run, which needs clang" OFF)
set(QUARVO_SANITIZE "" CACHE STRING "Comma-separated sanitizers, for example address,undefined; empty for none")

# Of the kinds whose vectors are as long as those of another, a build for tests alone needs one.
set(QUARVO_LEAVE_OUT_VECTORS "" CACHE STRING "Kinds of vectors that no code is made for, as Highway names them: HWY_SSSE3")
if(QUARVO_LEAVE_OUT_VECTORS)
  add_compile_definitions(HWY_DISABLED_TARGETS=${QUARVO_LEAVE_OUT_VECTORS})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  add_compile_options(-Wreserved-identifier)
endif()
if(QUARVO_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()

# Thresholds and perfections are defined in single steps of float arithmetic: a fused multiply-add would round once
# where the definition rounds twice, and the results would depend on the processor.
add_compile_options(-ffp-contract=off)

# Checked indexing and iterators of the standard library wherever asserts are on.
add_compile_definitions($<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

if(QUARVO_SANITIZE)
  add_compile_options(-fsanitize=${QUARVO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${QUARVO_SANITIZE})
endif()

# Comparisons are not traced: an input holds no magic words, and emulated vectors compare without end.
if(QUARVO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
endif()

if(QUARVO_COVERAGE)
  add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
  add_link_options(-fprofile-instr-generate)
endif()
