#include "comparison.h"

#include <gtest/gtest.h>

namespace differential {
namespace {

run_outcome outcome_with(const std::string& name, const std::string& text) {
  run_outcome outcome;
  outcome.ended = true;
  outcome.files = {{"stderr", ""}, {"stdout", ""}, {name, text}};
  return outcome;
}

TEST(without_times, replaces_the_times_of_progress_lines_only) {
  EXPECT_EQ(without_times("00.01.59 - #   1 -    1bp - s\n"), "hh.mm.ss - #   1 -    1bp - s\n");
  EXPECT_EQ(without_times("x\n123.00.07 - #   1"), "x\nhh.mm.ss - #   1");
  EXPECT_EQ(without_times(" 00.01.59 - # 1\n"), " 00.01.59 - # 1\n");
  EXPECT_EQ(without_times("00.01.59 - 1\n0.01.59 - # 1\n"), "00.01.59 - 1\n0.01.59 - # 1\n");
  EXPECT_EQ(without_times("no line end"), "no line end");
  EXPECT_EQ(without_times(""), "");
}

TEST(compare, finds_no_difference_but_in_times) {
  EXPECT_FALSE(compare(outcome_with("results", "a\n"), outcome_with("results", "a\n")));
  EXPECT_FALSE(compare(outcome_with("stderr", "00.00.01 - # 1\n"), outcome_with("stderr", "00.01.00 - # 1\n")));
  EXPECT_TRUE(compare(outcome_with("results", "00.00.01 - # 1\n"), outcome_with("results", "00.01.00 - # 1\n")));
}

TEST(compare, names_the_channel_and_the_first_line_that_differs) {
  const auto found = compare(outcome_with("results", "a\nb\nc\n"), outcome_with("results", "a\nx\nc\n"));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->channel, "results");
  EXPECT_EQ(found->text, "first at line 2\n  program:   b\n  reference: x");
}

TEST(compare, finds_a_missing_line_end) {
  EXPECT_TRUE(compare(outcome_with("results", "a\n"), outcome_with("results", "a")));
  EXPECT_TRUE(compare(outcome_with("results", "a"), outcome_with("results", "a\n")));
  EXPECT_TRUE(compare(outcome_with("results", ""), outcome_with("results", "\n")));
}

TEST(compare, finds_a_file_that_only_one_wrote) {
  const auto found = compare(outcome_with("in.fa.masked", ""), outcome_with("results", ""));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->channel, "in.fa.masked");
}

TEST(compare, puts_the_status_first) {
  run_outcome crashed = outcome_with("results", "a");
  crashed.status = -11;
  const auto found = compare(crashed, outcome_with("results", "b"));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->channel, "exit status");
  EXPECT_EQ(found->text, "program signal 11, reference 0");
}

}  // namespace
}  // namespace differential
