// What happens when there is no memory left.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <new>

#include "Csat.h"
#include "support/sanitizers.h"
#include "support/test-record.h"

namespace {

constexpr rlim_t limit_in_bytes = rlim_t{1} << 28;

[[noreturn]] void add_edits_until_memory_runs_out() {
  const rlimit limit{limit_in_bytes, limit_in_bytes};
  if (setrlimit(RLIMIT_AS, &limit) != 0) std::exit(1);
  const CTestRecord record("AC");
  Csat sat;
  try {
    for (rlim_t i = 0; i < limit_in_bytes; ++i) sat.add_missense(record.begin(), 'M');
  } catch (const std::bad_alloc&) {
    std::exit(3);
  }
  std::exit(2);
}

TEST(OutOfMemory, ForTheEditsOfARepeatIsOneAsForAllElse) {
  if (has_address_sanitizer) GTEST_SKIP() << "the address sanitizer reserves more than any limit would leave";
  EXPECT_EXIT(add_edits_until_memory_runs_out(), ::testing::ExitedWithCode(3), "^$");
}

[[noreturn]] void end_as_a_program_chose() {
  (void)std::fputs("chosen", stderr);
  std::exit(4);
}

TEST(OutOfMemory, ForTheEditsOfARepeatEndsAsTheProgramChose) {
  if (has_address_sanitizer) GTEST_SKIP() << "the address sanitizer reserves more than any limit would leave";
  const auto end_so = [] {
    Csat::when_edits_lack_memory(end_as_a_program_chose);
    add_edits_until_memory_runs_out();
  };
  EXPECT_EXIT(end_so(), ::testing::ExitedWithCode(4), "^chosen$");
}

}  // namespace
