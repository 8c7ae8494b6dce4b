#include "stretches.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

unsigned length_of(const search_stretch& stretch) { return stretch.end - stretch.begin; }

void expect_from_end_to_end(const std::vector<search_stretch>& all, unsigned length) {
  ASSERT_FALSE(all.empty());
  EXPECT_EQ(all.front().begin, 0U);
  EXPECT_EQ(all.back().end, length);
  for (std::size_t i = 1; i < all.size(); ++i) EXPECT_EQ(all[i].begin, all[i - 1].end);
}

unsigned longest_of(const std::vector<search_stretch>& all) {
  return length_of(*std::ranges::max_element(all, {}, length_of));
}

TEST(Stretches, LeaveNoThreadWithALongOneAtTheEnd) {
  for (const unsigned length : {0U, 1U, 100'000U, 2'000'000U, 250'000'000U}) {
    for (const unsigned threads : {2U, 7U, 64U}) {
      for (const unsigned longest_unit : {1U, 100U, 1000U}) {
        const auto all = decreasing_stretches(length, 0, threads, longest_unit);
        expect_from_end_to_end(all, length);
        EXPECT_LE(longest_of(all), 2U << 20) << length << " symbols, " << threads << " threads";
        if (all.size() == 1) continue;
        EXPECT_LE(longest_of(all), std::max(length / threads, 3 * length_of(all.back())));
        EXPECT_GT(length_of(all.back()), 5'000U + 150 * longest_unit);
        EXPECT_LT(length_of(all.back()), 50'000U + 800 * longest_unit);
      }
    }
  }
}

TEST(Stretches, AreAsManyAsAnyThreadsNeed) {
  EXPECT_GE(decreasing_stretches(250'000'000, 0, 64, 10).size(), 128U);
  EXPECT_LT(decreasing_stretches(250'000'000, 0, 64, 10).size(), 1000U);
}

TEST(Stretches, AreNotCutForTheSakeOfOneThread) { EXPECT_EQ(decreasing_stretches(250'000'000, 0, 1, 10).size(), 1U); }

// Short records that wait for the same threads are work enough for all of them.
TEST(Stretches, AreWholeRecordsWhereManyFollow) {
  EXPECT_EQ(decreasing_stretches(300'000, 3'700'000, 4, 10).size(), 1U);
  EXPECT_GT(decreasing_stretches(300'000, 0, 4, 10).size(), 4U);
}

TEST(Stretches, OfEqualLengthDifferByOneAtMost) {
  const auto all = equal_stretches(1001, 100);
  expect_from_end_to_end(all, 1001);
  EXPECT_EQ(all.size(), 10U);
  for (const search_stretch& one : all) EXPECT_NEAR(length_of(one), 100.0, 1.0);
}

}  // namespace
