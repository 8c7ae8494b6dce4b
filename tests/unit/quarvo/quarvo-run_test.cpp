// Whole runs in each mode. What a run writes and says, tests/cli shows.

#include <gtest/gtest.h>

#include "support/run.h"

namespace {

class Run : public RunTest {};

TEST_F(Run, FindsTheSameSimpleRepeatInEveryMode) {
  directory.write("in.fas", ">s1\nGGACACACACACGG\n");
  for (const char* const mode : {"exact", "extendExact", "imperfect"}) {
    run({"-M", mode, "--outputFormat", "4", in()});
    EXPECT_TRUE(ends_with(results, "\n>s1 1 10 2 3 12 5.000 8 100.000 0 0 0\nACACACACAC\n")) << mode << results;
  }
}

TEST_F(Run, RemovesOverlapsInEveryModeUnlessTold) {
  directory.write("in.fas", ">s1\nACACACGACACACAC\n");
  for (const char* const mode : {"extendExact", "imperfect"}) {
    run({"-M", mode, "--outputFormat", "4", in()});
    EXPECT_EQ(count(results, "\n>s1 "), 1U) << mode;
  }
  run({"-M", "extendExact", "-D", "--outputFormat", "4", in()});
  EXPECT_EQ(count(results, "\n>s1 "), 6U);
}

}  // namespace
