// Extend-exact mode.

#include <gtest/gtest.h>

#include <algorithm>

#include "support/search.h"

namespace {

constexpr const char* both_steps = "  Searching for exact repeats.\n  Extend exact to imperfect repeats.\n";

class ExtendExact : public ParameterTest {
 protected:
  static CSearched search(const std::string& symbols) { return {search_mode_extend_exact, symbols}; }

 private:
  test_clock::CReset reset;
};

TEST_F(ExtendExact, WithoutSeedsTellsBothStepsAndFindsNothing) {
  const CSearched searched = search("ACGT");
  EXPECT_EQ(searched.progress, both_steps);
  EXPECT_EQ(searched.results(), texts{});
  EXPECT_EQ(searched.work(), texts{});
}

TEST_F(ExtendExact, OfAnEmptySequenceFindsNothing) {
  const CSearched searched = search("");
  EXPECT_EQ(searched.progress, both_steps);
  EXPECT_EQ(searched.work(), texts{});
}

TEST_F(ExtendExact, GrowsASeedThroughAnEdit) {
  global_remove_mostly_hidden = false;
  const CSearched searched = search("ACACACGACACACAC");
  EXPECT_EQ(searched.results(), texts{});
  // The first stretch is too short for the user, so that it is a seed from each of its five starts.
  EXPECT_EQ(searched.work(), (texts{"[0,15) AC score 7 1I", "[0,15) CA score 7 1I", "[0,15) AC score 7 1I",
                                    "[0,15) CA score 7 1I", "[0,15) AC score 7 1I", "[0,15) AC score 7 1I"}));
}

TEST_F(ExtendExact, LeavesTwoSeedsOfOneRepeatBothInTheWorkList) {
  const CSearched searched = search("ACACACACACGACACACACAC");
  EXPECT_EQ(searched.work(), (texts{"[0,21) AC score 13 1I", "[0,21) AC score 13 1I"}));
  for (const Csat* sat : searched.controller.work_list.records) EXPECT_EQ(edits_of(*sat, searched.record), "10I");
}

TEST_F(ExtendExact, SortsTheEditsOfARepeatThatGrewBothWays) {
  set_unit_lengths(2, 2);
  const std::string block = "ACACACAC";
  const CSearched searched = search(block + "G" + block + "G" + block);
  ASSERT_EQ(searched.work(), texts(3, "[0,26) AC score 12 2I"));
  for (const Csat* sat : searched.controller.work_list.records) EXPECT_EQ(edits_of(*sat, searched.record), "8I 17I");
}

TEST_F(ExtendExact, StopsInFrontOfTooManyNs) {
  EXPECT_EQ(search("ACACACACNNNACACACAC").work(), (texts{"[0,8) AC score 6", "[11,19) AC score 6"}));
}

TEST_F(ExtendExact, GivesUpTheAllowedNsAtTheEndsOfARepeat) {
  EXPECT_EQ(search("ACACACACNN").work(), texts{"[0,8) AC score 6"});
  EXPECT_EQ(search("NNACACACAC").work(), texts{"[2,10) AC score 6"});
  EXPECT_EQ(search("ACACNNACACNNGG").work(), texts{"[0,10) AC score 6 2N"});
}

TEST_F(ExtendExact, ReturnsASeedBelowTheUsersScoreToThePool) {
  CBasicSatContainer drained;
  drained.records.splice(drained.records.end(), sat_alloc.records);
  const CSearched searched = search("TTACACACTT");  // a seed with score 4
  EXPECT_EQ(searched.work(), texts{});
  EXPECT_EQ(searched.results(), texts{});
  EXPECT_FALSE(sat_alloc.records.empty());
}

TEST_F(ExtendExact, RejectsARepeatBelowTheUsersLength) {
  global_min_length = 9;
  EXPECT_EQ(search("ACACACAC").work(), texts{});
  EXPECT_EQ(search("ACACACACA").work(), texts{"[0,9) AC score 7"});
}

TEST_F(ExtendExact, ComparesTheLengthWithoutInsertionsWithTheUsers) {
  global_remove_mostly_hidden = false;
  global_min_length = 14;  // both stretches are shorter: seeds from five and six starts
  EXPECT_EQ(search("ACACACGACACACAC").work().size(), 11U);
  global_min_length = 15;
  EXPECT_EQ(search("ACACACGACACACAC").work(), texts{});
}

TEST_F(ExtendExact, FindsARepeatWhoseSeedsAreAllBelowTheUsersScore) {
  // Two stretches with score 4 each, seeds from five and four starts; together 4 - 2 + 6.
  global_mismatch_score = global_indel_score = -2;
  global_remove_mostly_hidden = false;
  const texts all = search("ACACACTACACAC").work();
  EXPECT_EQ(all.size(), 9U);
  EXPECT_EQ(std::count(all.begin(), all.end(), "[0,13) AC score 8 1I"), 5);
  EXPECT_EQ(std::count(all.begin(), all.end(), "[0,13) CA score 8 1I"), 4);
}

TEST_F(ExtendExact, KeepsOneOfTheSeedsOfAStretchWhereOverlapsAreRemoved) {
  global_mismatch_score = global_indel_score = -2;
  EXPECT_EQ(search("ACACACTACACAC").work(), (texts{"[0,13) AC score 8 1I", "[0,13) AC score 8 1I"}));
}

TEST_F(ExtendExact, LeavesTheUsersThresholdsInForce) {
  search("ACACACAC");
  EXPECT_EQ(CSearchController::minScores, CSearchController::minScores_user);
  EXPECT_EQ(CSearchController::minLengths, CSearchController::minLengths_user);
}

TEST_F(ExtendExact, SortsByStart) {
  const CSearched searched = search("ACACACACTTTTTTTTTTCCGCCGCCG");
  EXPECT_EQ(searched.work(), (texts{"[0,8) AC score 6", "[8,18) T score 9", "[18,27) CCG score 6"}));
}

TEST_F(ExtendExact, ReportsProgressBetweenItsSteps) {
  set_unit_lengths(2, 3);
  let_a_minute_pass();
  time_analysis_started = test_clock::now;
  EXPECT_EQ(search("ACGT").progress,
            "  Searching for exact repeats.\n00.00.00 - #   7 -    2bp - seq1\n  Extend exact to imperfect repeats.\n");
}

}  // namespace
