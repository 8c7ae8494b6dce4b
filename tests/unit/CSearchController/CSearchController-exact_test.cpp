// The exact search.

#include <gtest/gtest.h>

#include <limits>

#include "support/search.h"

namespace {

// As a bound of the perfection, met by no repeat in the search and by every one in the report.
constexpr float not_a_number = std::numeric_limits<float>::quiet_NaN();

class ExactSearch : public ParameterTest {
 protected:
  static texts search(const std::string& symbols) { return CSearched(search_mode_exact, symbols).results(); }

  // Minimum score of every unit length.
  static void set_minimum_score(int score) {
    global_min_score = score;
    global_min_score_bx = 0.0F;
  }

 private:
  test_clock::CReset reset;
};

TEST_F(ExactSearch, FindsARepeatOnceWithItsShortestUnit) {
  set_unit_lengths(1, 4);
  EXPECT_EQ(search("ACACACAC"), texts{"[0,8) AC score 6"});
}

TEST_F(ExactSearch, FindsARunOfOneSymbolAsMononucleotideRepeatOnly) {
  set_minimum_score(3);
  EXPECT_EQ(search("AAAAAA"), texts{"[0,6) A score 5"});
}

TEST_F(ExactSearch, PassesOverARunOfAllowedNs) { EXPECT_EQ(search("ACACNNACAC"), texts{"[0,10) AC score 6 2N"}); }

TEST_F(ExactSearch, StopsBeforeARunOfTooManyNs) {
  set_minimum_score(2);
  EXPECT_EQ(search("ACACNNNACAC"), (texts{"[0,4) AC score 2", "[7,11) AC score 2"}));
}

TEST_F(ExactSearch, KeepsThePhaseOfTheUnitAcrossNs) {
  EXPECT_EQ(search("ACACACNCACAC"), texts{"[0,12) AC score 9 1N"});
  EXPECT_EQ(search("ACACACACNACACACAC"), (texts{"[0,8) AC score 6", "[9,17) AC score 6"}));
}

TEST_F(ExactSearch, StopsAtEveryNWhenNsAreMissense) {
  set_minimum_score(2);
  global_treat_Ns_as_missense = true;
  EXPECT_EQ(search("ACACNCAC"), (texts{"[0,4) AC score 2"}));
  EXPECT_EQ(search("ACACNACAC"), (texts{"[0,4) AC score 2", "[5,9) AC score 2"}));
}

TEST_F(ExactSearch, StopsAtEveryNWhenNoneIsAllowed) {
  set_minimum_score(2);
  global_Ns_allowed_in_a_row = 0;
  EXPECT_EQ(search("ACACNNACAC"), (texts{"[0,4) AC score 2", "[6,10) AC score 2"}));
}

TEST_F(ExactSearch, EndsBeforeAnNThatAMismatchFollows) { EXPECT_EQ(search("ACACACACNGG"), texts{"[0,8) AC score 6"}); }

TEST_F(ExactSearch, BeginsBehindAnNThatAMismatchPrecedes) {
  EXPECT_EQ(search("GGNACACACAC"), texts{"[3,11) AC score 6"});
}

TEST_F(ExactSearch, GivesUpNsAtBothEndsOfTheSequence) {
  EXPECT_EQ(search("NNACACACACNN"), texts{"[2,10) AC score 6"});
  EXPECT_EQ(search("NNAAAAAAAANN"), texts{"[2,10) A score 7"});
}

TEST_F(ExactSearch, ReachesBackAcrossNsBeforeTheUnit) {
  EXPECT_EQ(search("ANACNCACACAC"), texts{"[0,12) AC score 8 2N"});
}

TEST_F(ExactSearch, ScoresNothingForTheFirstCopy) {
  set_unit_lengths(3, 3);
  EXPECT_EQ(search("TTACGACGACGGG"), texts{"[2,11) ACG score 6"});
}

TEST_F(ExactSearch, FindsAPartialCopyAtBothEnds) {
  set_unit_lengths(3, 3);
  EXPECT_EQ(search("GACGACGACGA"), texts{"[0,11) GAC score 8"});
}

TEST_F(ExactSearch, SkipsAUnitLengthAsLongAsTheSequence) {
  set_minimum_score(0);
  set_unit_lengths(4, 4);
  EXPECT_EQ(search("ACGT"), texts{});
  EXPECT_EQ(search("ACGTA"), texts{"[0,5) ACGT score 1"});
}

TEST_F(ExactSearch, SkipsMononucleotidesWhenTheMinimumUnitLengthIsTwo) {
  set_unit_lengths(2, 10);
  EXPECT_EQ(search("AAAAAAAAAAAA"), texts{});
}

TEST_F(ExactSearch, FindsNothingForUnitsOfNoSymbolsAndNoMononucleotidesWithThem) {
  set_unit_lengths(0, 2);
  EXPECT_EQ(search("AAAAAAAAAAACACACACAC"), texts{"[10,20) AC score 8"});
}

TEST_F(ExactSearch, FindsNothingInSequencesWithoutSymbolsOrWithNsOnly) {
  set_minimum_score(0);
  EXPECT_EQ(search(""), texts{});
  EXPECT_EQ(search("A"), texts{});
  EXPECT_EQ(search("NNNNNNNN"), texts{});
}

TEST_F(ExactSearch, ComparesTheAlignedLengthWithTheMinimumLength) {
  global_min_length = 9;
  EXPECT_EQ(search("ACACACAC"), texts{});
  EXPECT_EQ(search("ACACACACA"), texts{"[0,9) AC score 7"});
}

TEST_F(ExactSearch, FindsARepeatOutsideThePerfectionRangeFromEveryStartAgain) {
  global_remove_mostly_hidden = false;
  global_min_perfection = not_a_number;
  set_unit_lengths(1, 2);
  EXPECT_EQ(search("ACACACAC"), (texts{"[0,8) AC score 6", "[0,8) CA score 6", "[0,8) AC score 6", "[0,8) CA score 6",
                                       "[0,8) AC score 6", "[0,8) CA score 6"}));
}

TEST_F(ExactSearch, KeepsOneOfTheRepeatsFromAllStartsWhereOverlapsAreRemoved) {
  global_min_perfection = not_a_number;
  EXPECT_EQ(search("TACACACAC"), (texts{"[1,9) AC score 6"}));
}

TEST_F(ExactSearch, KeepsOneOfTheRepeatsFromAllStartsWhereNoneIsReported) {
  global_remove_mostly_hidden = false;
  global_max_perfection = 50.0F;
  EXPECT_EQ(search("TACACACAC"), (texts{"[1,9) AC score 6"}));
}

TEST_F(ExactSearch, CoversARepeatAtTheBoundsOfThePerfectionRange) {
  set_unit_lengths(1, 2);
  global_min_perfection = global_max_perfection = 80.0F;
  EXPECT_EQ(search("ACACNNACAC"), texts{"[0,10) AC score 6 2N"});
}

TEST_F(ExactSearch, FindsARepeatThatIsNotCoveredFromEveryStartAgain) {
  set_unit_lengths(2, 2);
  global_min_perfection = 101.0F;
  CSearchController::reset_minimum_arrays();
  CTestRecord record("ACACACAC");
  CSearchController as_defined(1, record);
  as_defined.exact_search_2();
  EXPECT_EQ(as_defined.result_list.records.size(), 6U);
  EXPECT_EQ(search("ACACACAC"), texts{"[0,8) AC score 6"});  // one is enough where none is reported
}

TEST_F(ExactSearch, SortsShorterUnitsFirstAmongRepeatsWithTheSameEnds) {
  set_minimum_score(4);
  global_remove_mostly_hidden = false;
  global_min_perfection = not_a_number;  // nothing is covered
  const texts found = search("ACACACAC");
  ASSERT_EQ(found.size(), 10U);  // six starts for two symbols, four for four
  EXPECT_EQ(found[5], "[0,8) CA score 6");
  EXPECT_EQ(found[6], "[0,8) ACAC score 4");
}

TEST_F(ExactSearch, SortsByStart) {
  EXPECT_EQ(search("ACACACACAAAAAAAAACGACGACG"),
            (texts{"[0,9) AC score 7", "[8,17) A score 8", "[16,25) ACG score 6"}));
}

TEST_F(ExactSearch, ReportsProgressForUnitLengthsThatTheSequenceHasRoomFor) {
  set_unit_lengths(2, 4);
  let_a_minute_pass();
  EXPECT_EQ(CSearched(search_mode_exact, "AC").progress, "");
  time_analysis_started = test_clock::now;
  EXPECT_EQ(CSearched(search_mode_exact, "ACG").progress, "00.00.00 - #   7 -    2bp - seq1\n");
}

TEST_F(ExactSearch, ReportsProgressOnceAMinute) {
  set_unit_lengths(2, 9);
  let_a_minute_pass();
  time_analysis_started = test_clock::now;
  EXPECT_EQ(CSearched(search_mode_exact, repeated("ACGGT", 200)).progress, "00.00.00 - #   7 -    2bp - seq1\n");
}

TEST_F(ExactSearch, LeavesAtMostOneSpareRecordBehindAndReturnsItToThePool) {
  CBasicSatContainer drained;
  drained.records.splice(drained.records.end(), sat_alloc.records);
  EXPECT_EQ(search("ACGGTCATGCA"), texts{});
  EXPECT_LE(sat_alloc.records.size(), 1U);
}

}  // namespace
