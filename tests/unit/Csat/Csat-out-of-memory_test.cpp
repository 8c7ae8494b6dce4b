// What happens when there is no memory left.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>

#include "Csat.h"
#include "support/sanitizers.h"
#include "support/test-record.h"

namespace {

constexpr rlim_t limit_in_bytes = rlim_t{1} << 28;

// Standard output goes where the test sees it.
[[noreturn]] void add_edits_until_memory_runs_out() {
  const rlimit limit{limit_in_bytes, limit_in_bytes};
  if (setrlimit(RLIMIT_AS, &limit) != 0) std::exit(1);
  dup2(STDERR_FILENO, STDOUT_FILENO);
  const CTestRecord record("AC");
  Csat sat;
  for (rlim_t i = 0; i < limit_in_bytes; ++i) sat.add_missense(record.begin(), 'M');
  std::exit(2);
}

TEST(OutOfMemory, ForTheEditsOfARepeatEndsTheProcessWithStatusZeroAndAMessage) {
  if (has_address_sanitizer) GTEST_SKIP() << "the address sanitizer reserves more than any limit would leave";
  EXPECT_EXIT(add_edits_until_memory_runs_out(), ::testing::ExitedWithCode(0),
              "^Program aborded due to failed realloc!\n$");
}

}  // namespace
