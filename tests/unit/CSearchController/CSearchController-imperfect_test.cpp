// Imperfect mode.

#include <gtest/gtest.h>

#include "support/search.h"

namespace {

class ImperfectSearch : public ParameterTest {
 protected:
  static CSearched search(const std::string& symbols) { return {search_mode_imperfect, symbols}; }
  static texts found(const std::string& symbols) { return search(symbols).work(); }

 private:
  test_clock::CReset reset;
};

TEST_F(ImperfectSearch, FindsARepeatWithAnInsertion) {
  EXPECT_EQ(found("ACACACGACACACAC"), texts{"[0,15) AC score 7 1I"});
}

TEST_F(ImperfectSearch, LeavesTheResultListEmpty) { EXPECT_EQ(search("ACACACGACACACAC").results(), texts{}); }

TEST_F(ImperfectSearch, HasNoCandidateAndNoProgressForASequenceNotLongerThanTheUnit) {
  accept_every_score();
  set_unit_lengths(4, 4);
  let_a_minute_pass();
  const CSearched too_short = search("ACGT");
  EXPECT_EQ(too_short.work(), texts{});
  EXPECT_EQ(too_short.progress, "");
  time_analysis_started = test_clock::now;
  const CSearched just_long_enough = search("ACGTA");
  EXPECT_EQ(just_long_enough.work(), texts{"[0,5) ACGT score 1"});
  EXPECT_EQ(just_long_enough.progress, "00.00.00 - #   7 -    4bp - seq1\n");
}

TEST_F(ImperfectSearch, FindsNothingInSequencesWithoutSymbolsOrWithNsOnly) {
  accept_every_score();
  EXPECT_EQ(found(""), texts{});
  EXPECT_EQ(found("A"), texts{});
  EXPECT_EQ(found("NNNNNNNN"), texts{});
}

TEST_F(ImperfectSearch, TriesNoUnitOfEqualSymbols) {
  accept_every_score();
  set_unit_lengths(2, 4);
  EXPECT_EQ(found("AAAAAAAAAA"), texts{});
  set_unit_lengths(3, 3);
  EXPECT_EQ(found("TTTTT"), texts{});
}

TEST_F(ImperfectSearch, TriesAUnitMadeOfAShorterOne) {
  set_unit_lengths(4, 4);
  EXPECT_EQ(found("ACACACACACAC"), texts{"[0,12) ACAC score 8"});
}

TEST_F(ImperfectSearch, TriesNoUnitWithAnN) {
  accept_every_score();
  set_unit_lengths(2, 2);
  global_treat_Ns_as_missense = true;
  EXPECT_EQ(found("ACNGTNC"), (texts{"[0,2) AC score 0", "[3,5) GT score 0"}));
}

TEST_F(ImperfectSearch, TriesNothingInsideARepeatButItsEdits) {
  accept_every_score();
  set_unit_lengths(2, 2);
  EXPECT_EQ(found("ACACACACACGTACACACACAC"), (texts{"[0,22) AC score 8 2M", "[10,12) GT score 0"}));
}

TEST_F(ImperfectSearch, TriesNothingAtASingleEditWithoutAFreeNeighbour) {
  accept_every_score();
  set_unit_lengths(2, 2);
  EXPECT_EQ(found("ACACACGACACACAC"), texts{"[0,15) AC score 7 1I"});
}

TEST_F(ImperfectSearch, TriesAUnitAtTheStartOfARepeatIfItEndsFreeBehindIt) {
  global_min_score = 2;
  global_min_score_bx = 0.0F;
  set_unit_lengths(2, 6);
  EXPECT_EQ(found("TACACTGACACTG"), (texts{"[1,5) AC score 2", "[1,13) ACACTG score 6", "[7,11) AC score 2"}));
}

TEST_F(ImperfectSearch, ForgetsTheMononucleotideRepeatsBeforeTheNextUnitLength) {
  accept_every_score();
  set_unit_lengths(1, 2);
  const texts all = found("ACACACAC");
  ASSERT_EQ(all.size(), 8U);  // seven single symbols: a unit has a symbol after it
  EXPECT_EQ(all[0], "[0,1) A score 0");
  EXPECT_EQ(all[1], "[0,8) AC score 6");
  EXPECT_EQ(all[7], "[6,7) A score 0");
}

TEST_F(ImperfectSearch, KeepsARegionClosedToLongerUnits) {
  set_unit_lengths(2, 4);
  EXPECT_EQ(found("ACACACACACACACAC"), texts{"[0,16) AC score 14"});
}

TEST_F(ImperfectSearch, FindsMononucleotideRepeatsThroughEditsAndNs) {
  set_unit_lengths(1, 1);
  EXPECT_EQ(found("AAAAAAAAACAAAAAAAAA"), texts{"[0,19) A score 12 1M"});
  EXPECT_EQ(found("NNAAAAANAAAANN"), texts{"[2,12) A score 8 1N"});
}

TEST_F(ImperfectSearch, RunsNoPassWhenTheMinimumUnitLengthIsAboveTheMaximum) {
  accept_every_score();
  set_unit_lengths(3, 2);
  EXPECT_EQ(found("ACACACACACAC"), texts{});
}

TEST_F(ImperfectSearch, FindsNothingForUnitsOfNoSymbolsAndNoMononucleotidesWithThem) {
  set_unit_lengths(0, 2);
  EXPECT_EQ(found(std::string(12, 'G')), texts{});
  EXPECT_EQ(found("ACACACAC"), texts{"[0,8) AC score 6"});
}

TEST_F(ImperfectSearch, GivesUpNsAtTheEndsOfARepeat) {
  set_unit_lengths(2, 2);
  EXPECT_EQ(found("NNACACACACNN"), texts{"[2,10) AC score 6"});
  EXPECT_EQ(found("ACACNNACAC"), texts{"[0,10) AC score 6 2N"});
}

TEST_F(ImperfectSearch, ComparesTheAlignedLengthWithTheMinimumLength) {
  global_min_length = 14;
  EXPECT_EQ(found("ACACACGACACACAC"), texts{"[0,15) AC score 7 1I"});
  global_min_length = 15;
  EXPECT_EQ(found("ACACACGACACACAC"), texts{});
}

TEST_F(ImperfectSearch, SortsTheEditsOfARepeatThatGrewBothWays) {
  set_unit_lengths(4, 4);
  // Every unit in the first half holds an N, so that the first candidate stands in the middle.
  const std::string left =
      "ACNTACNT"
      "TCNTACNT";
  const std::string right =
      "ACGTACGTACGT"
      "CCGTACGTACGT";
  const CSearched searched = search(left + right);
  ASSERT_EQ(searched.work(), texts{"[0,40) TACG score 20 2M 4N"});
  EXPECT_EQ(edits_of(*searched.controller.work_list.records.front(), searched.record), "8M 28M");
}

TEST_F(ImperfectSearch, SortsByStart) {
  EXPECT_EQ(found("CCGCCGCCGTTTTTTTTTTACACACACA"),
            (texts{"[0,9) CCG score 6", "[9,19) T score 9", "[19,28) AC score 7"}));
}

TEST_F(ImperfectSearch, ReportsProgressOnceAMinuteWithTheUnitLength) {
  set_unit_lengths(3, 9);
  let_a_minute_pass();
  time_analysis_started = test_clock::now;
  EXPECT_EQ(search(repeated("ACGGT", 200)).progress, "00.00.00 - #   7 -    3bp - seq1\n");
}

TEST_F(ImperfectSearch, LeavesAtMostOneSpareRecordAPassAndReturnsItToThePool) {
  CBasicSatContainer drained;
  drained.records.splice(drained.records.end(), sat_alloc.records);
  EXPECT_EQ(found("ACGGTCATGCA"), texts{});
  EXPECT_LE(sat_alloc.records.size(), 1U);  // the spare of one pass serves the next
}

TEST_F(ImperfectSearch, DoesNotCarryTheEditsOfARejectedCandidateIntoTheNext) {
  set_unit_lengths(10, 10);  // with such long units even candidates without a match make edits
  const CSearched searched = search(std::string("GTCCATGGATT") + repeated("ACGTTGCAAC", 3));
  ASSERT_EQ(searched.work(), texts{"[11,41) ACGTTGCAAC score 20"});
  EXPECT_EQ(edits_of(*searched.controller.work_list.records.front(), searched.record), "");
}

}  // namespace
