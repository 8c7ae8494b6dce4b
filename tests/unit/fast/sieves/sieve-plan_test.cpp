// Which sieves the default scoring has, and what others take away from them.

#include "sieve-plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>

namespace {

constexpr std::size_t longer = longest_short_record + 1;

class SievePlan : public ::testing::Test {
 protected:
  scoring rules{-5, -5, std::numeric_limits<int>::max(), 1, 5, true, 5};
  bool has_strange_Ns = false;
  std::size_t reach = sieve_question::whole_record;

  sieve_plan plan(unsigned L, std::size_t length, int T) {
    return plan_sieves({bound_of(rules, L, T), length, reach, has_strange_Ns, programs});
  }
  sieve_plan plan(unsigned L, std::size_t length) { return plan(L, length, default_score(L)); }

  void expect(unsigned from, unsigned to, std::size_t length, first_sieve first) {
    for (unsigned L = from; L <= to; ++L) EXPECT_EQ(plan(L, length).first(), first) << L << ' ' << length;
  }

  // A build may leave the kernels of longer units out.
  void expect_kernel(unsigned from, unsigned to, std::size_t length, first_sieve without_kernel) {
    EXPECT_TRUE(has_kernel(1));
    for (unsigned L = from; L <= to; ++L) expect(L, L, length, has_kernel(L) ? first_sieve::kernel : without_kernel);
  }

 private:
  CAlignmentPrograms programs;

  static int default_score(unsigned L) { return std::max(6, static_cast<int>(L)); }
  bool has_kernel(unsigned L) const { return find_alignment_kernel(bound_of(rules, L, default_score(L))) != nullptr; }
};

using sizes = std::array<unsigned, 2>;

TEST_F(SievePlan, OfShortRecords) {
  expect_kernel(1, 12, longest_short_record, first_sieve::batches);
  expect(13, 119, longest_short_record, first_sieve::batches);
  expect(120, 300, longest_short_record, first_sieve::potential);
  EXPECT_FALSE(plan(5, longest_short_record).is_tested_again);
  EXPECT_FALSE(plan(50, longest_short_record).is_tested_again);
}

TEST_F(SievePlan, OfLongerRecords) {
  expect_kernel(1, 20, longer, first_sieve::program);
  expect(21, 750, longer, first_sieve::potential);
  EXPECT_EQ(plan(20, longer).clusters, (sizes{0, 0}));
  EXPECT_EQ(plan(31, longer).clusters, (sizes{16, 4}));
  EXPECT_EQ(plan(32, longer).clusters, (sizes{32, 8}));
  EXPECT_EQ(plan(128, longer).clusters, (sizes{64, 16}));
  EXPECT_EQ(plan(129, longer).clusters, (sizes{64, 0}));
  EXPECT_TRUE(plan(5, longer).is_tested_again);
  expect(21, 127, 1000000, first_sieve::potential);
  expect(128, 3000, 1000000, first_sieve::windows);
  EXPECT_EQ(plan(129, 1000000).clusters, (sizes{64, 0}));
  EXPECT_TRUE(plan(128, 1000000).is_tested_again);
  EXPECT_FALSE(plan(129, 1000000).is_tested_again);
  EXPECT_EQ(plan(2000, 1000000).clusters, (sizes{64, 0}));
  EXPECT_EQ(plan(2001, 1000000).clusters, (sizes{0, 0}));
}

TEST_F(SievePlan, WithoutRoomForTheScoreHasNothingToDo) {
  EXPECT_EQ(plan(30, 60).first(), first_sieve::batches);
  EXPECT_EQ(plan(30, 59).first(), first_sieve::nothing);
}

TEST_F(SievePlan, LeavesTheKernelsToTheDefaultScoring) {
  rules.mismatch_score = -6;
  expect(1, 8, longer, first_sieve::program);
  expect(1, 119, longest_short_record, first_sieve::batches);
}

TEST_F(SievePlan, LeavesTheKernelsToRecordsWhoseNsMatch) {
  has_strange_Ns = true;
  expect(1, 20, longer, first_sieve::program);
  expect(1, 119, longest_short_record, first_sieve::batches);
}

TEST_F(SievePlan, OfAWindowIsThatOfALongRecordAsFarAsProgramsReachNoFarther) {
  reach = 192;
  expect_kernel(1, 20, longest_short_record, first_sieve::program);
  EXPECT_EQ(plan(60, longest_short_record).first(), first_sieve::potential);
  reach = 10;
  expect(5, 20, longer, first_sieve::everything);
}

TEST_F(SievePlan, BeginsWithThePotentialEarlierWherePenaltiesAreMild) {
  rules.indel_score = -4;
  EXPECT_NE(plan(15, longer).first(), first_sieve::potential);
  expect(16, 100, longer, first_sieve::potential);
}

TEST_F(SievePlan, HasProgramsAndSmallClustersWhereEditsAreCheap) {
  rules.mismatch_score = rules.indel_score = -3;
  for (unsigned L = 1; L <= 10; ++L) EXPECT_EQ(plan(L, longer, 12).first(), first_sieve::program) << L;
  EXPECT_EQ(plan(15, longer, 15).clusters, (sizes{8, 2}));
  EXPECT_EQ(plan(16, longer, 16).clusters, (sizes{8, 2}));
  EXPECT_EQ(plan(31, longer, 31).clusters, (sizes{8, 2}));
  EXPECT_EQ(plan(32, longer, 32).clusters, (sizes{32, 8}));
}

TEST_F(SievePlan, KeepsEverythingWhereNoSieveIsOfUse) {
  rules.mismatch_score = rules.indel_score = -2;
  expect(20, 60, longer, first_sieve::everything);
  EXPECT_EQ(plan(20, longer).clusters, (sizes{16, 4}));
  EXPECT_EQ(plan(20, longer, 0).first(), first_sieve::everything);
  EXPECT_EQ(plan(20, longer, 0).clusters, (sizes{0, 0}));
}

}  // namespace
