// The imperfect extension of one repeat.

#include <gtest/gtest.h>

#include <string>

#include "CSearchController.h"
#include "support/default-parameters.h"
#include "support/fast-extension.h"
#include "support/repeats.h"
#include "support/test-record.h"

namespace {

// A repeat that is the single copy of the unit [unit_from, unit_to) of its sequence, to be grown.
class CGrown {
 public:
  CTestRecord record;
  Csat sat;

  CGrown(const std::string& symbols, int unit_from, int unit_to) : record(symbols) {
    sat.reset(record.at(unit_from), record.at(unit_to));
  }

  // Both as defined; with shortcuts the same comes of it.
  CGrown& to_the_right() {
    Csat fast;
    fast.reset(sat.unit_begin, sat.unit_end);
    fast.recursion_depth = sat.recursion_depth;
    CFastExtension(record.begin(), record.end()).to_the_right(fast);
    CSearchController::extend_imperfect_forward(sat, record.end());
    EXPECT_EQ(describe(fast, record) + edits_of(fast, record), repeat() + edits());
    return *this;
  }
  CGrown& to_the_left() {
    CSearchController::extend_imperfect_backward(sat, record.begin() - 1);
    return *this;
  }

  std::string repeat() const { return describe(sat, record); }
  std::string edits() const { return edits_of(sat, record); }
  std::ptrdiff_t fwd_cursor() const { return sat.fwd_unit_cursor - sat.unit_begin; }
  std::ptrdiff_t bwd_cursor() const { return sat.bwd_unit_cursor - sat.unit_begin; }
};

class Extension : public ParameterTest {
 protected:
  static std::string right(const std::string& symbols) { return CGrown(symbols, 0, 2).to_the_right().repeat(); }
};

// The unit at the other end, for the same cases to the left.
std::string mirrored(const std::string& symbols) { return {symbols.rbegin(), symbols.rend()}; }

TEST_F(Extension, OfTheExampleWithOneInsertedSymbol) {
  CGrown grown("ACACACGACACACAC", 0, 2);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,15) AC score 7 1I");
  EXPECT_EQ(grown.sat.length(), 14);
  EXPECT_EQ(grown.edits(), "6I");
  EXPECT_EQ(grown.fwd_cursor(), 0);
}

TEST_F(Extension, OfTheExampleToTheLeft) {
  CGrown grown("ACACACACGACACAC", 13, 15);
  grown.to_the_left();
  EXPECT_EQ(grown.repeat(), "[0,15) AC score 7 1I");
  EXPECT_EQ(grown.edits(), "8I");
  EXPECT_EQ(grown.bwd_cursor(), 1);
}

TEST_F(Extension, GainsAPointForEverySymbolThatMatchesUpToTheSequenceEnd) {
  CGrown grown("ACGACGACGA", 0, 3);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,10) ACG score 7");
  EXPECT_EQ(grown.edits(), "");
  EXPECT_EQ(grown.fwd_cursor(), 1);
}

TEST_F(Extension, GainsAPointForEverySymbolThatMatchesDownToTheSequenceStart) {
  CGrown grown("GACGACGACG", 7, 10);
  grown.to_the_left();
  EXPECT_EQ(grown.repeat(), "[0,10) ACG score 7");
  EXPECT_EQ(grown.bwd_cursor(), 1);
}

TEST_F(Extension, AtTheSequenceEndChangesNothing) {
  CGrown grown("AC", 0, 2);
  grown.to_the_right().to_the_left();
  EXPECT_EQ(grown.repeat(), "[0,2) AC score 0");
}

TEST_F(Extension, GoesBackToTheBestEndWhenAnEditDoesNotPay) {
  CGrown grown("ACACACGAC", 0, 2);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,6) AC score 4");
  EXPECT_EQ(grown.edits(), "");
  EXPECT_EQ(grown.fwd_cursor(), 0);
}

TEST_F(Extension, EndsAtTheFartherOfTwoEqualEndsByDefault) { EXPECT_EQ(right("ACACACGACACA"), "[0,12) AC score 4 1I"); }

TEST_F(Extension, EndsAtTheNearerOfTwoEqualEndsWhenShorterRepeatsArePreferred) {
  global_prefer_longer_repeat = 0;
  EXPECT_EQ(right("ACACACGACACA"), "[0,6) AC score 4");
}

TEST_F(Extension, ReplacesAnEqualEndInTheMiddleByDefault) {
  // The second end with score 4 stands before the second G, from where nothing pays.
  EXPECT_EQ(right("ACACACGACACAGTT"), "[0,12) AC score 4 1I");
  global_prefer_longer_repeat = 0;
  EXPECT_EQ(right("ACACACGACACAGTT"), "[0,6) AC score 4");
}

TEST_F(Extension, KeepsAnEndOnePointBelowTheBestWhereNoEditIsAdmissible) {
  global_mismatch_score = global_indel_score = -6;
  EXPECT_EQ(right("ACACACGACACAT"), "[0,12) AC score 3 1I");
}

TEST_F(Extension, GivesUpAnEndOnePointBelowTheBestAtTheSequenceEnd) {
  global_mismatch_score = global_indel_score = -6;
  EXPECT_EQ(right("ACACACGACACA"), "[0,6) AC score 4");
}

TEST_F(Extension, GivesUpAnEndTwoPointsBelowTheBestWhereNoEditIsAdmissible) {
  global_mismatch_score = global_indel_score = -6;
  EXPECT_EQ(right("ACACACGACACT"), "[0,6) AC score 4");
}

TEST_F(Extension, PassesTwoNsWhereTwoAreAllowed) { EXPECT_EQ(right("ACACNNACAC"), "[0,10) AC score 6 2N"); }

TEST_F(Extension, StopsBeforeThreeNsWhereTwoAreAllowed) { EXPECT_EQ(right("ACACNNNCAC"), "[0,4) AC score 2"); }

TEST_F(Extension, PassesNsToTheLeft) {
  EXPECT_EQ(CGrown("ACACNNACAC", 8, 10).to_the_left().repeat(), "[0,10) AC score 6 2N");
  EXPECT_EQ(CGrown("ACANNNACAC", 8, 10).to_the_left().repeat(), "[6,10) AC score 2");
}

TEST_F(Extension, LooksAheadBeyondThreeNsWhereItStopsBeforeThem) {
  // The insertion pays because the look-ahead passes the N's; the extension then ends before them and gives it up.
  CGrown grown("ACACACACGACNNNCACACACAC", 0, 2);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,8) AC score 6");
  EXPECT_EQ(grown.edits(), "");
}

TEST_F(Extension, TakesAnNForAMismatchWhenNsAreMissense) {
  global_treat_Ns_as_missense = true;
  CGrown grown("ACACACNCACACAC", 0, 2);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,14) AC score 6 1M");
  EXPECT_EQ(grown.edits(), "6M");
}

TEST_F(Extension, TakesAnNForAnInsertionWhenNoneIsAllowed) {
  global_Ns_allowed_in_a_row = 0;
  CGrown grown("ACACACNACACACAC", 0, 2);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,15) AC score 7 1I");
  EXPECT_EQ(grown.edits(), "6I");
}

TEST_F(Extension, KeepsTheMatchesBeforeAMismatchWhereNoEditIsAdmissible) {
  CGrown grown("ACACTACACACAC", 0, 2);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,4) AC score 2");
  EXPECT_EQ(grown.edits(), "");
  EXPECT_EQ(grown.sat.pos_left, grown.record.at(0));
}

TEST_F(Extension, PrefersAMismatchToADeletionOfTheSameValue) {
  global_maximum_recursion_depth = 1;
  CGrown grown(repeated("AC", 10) + "CCTC" + repeated("AC", 10), 0, 2);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,44) AC score 30 2M");
  EXPECT_EQ(grown.edits(), "20M 22M");
}

TEST_F(Extension, PrefersAMismatchToADeletionOfTheSameValueToTheLeft) {
  global_maximum_recursion_depth = 1;
  CGrown grown(mirrored(repeated("AC", 10) + "CCTC" + repeated("AC", 10)), 42, 44);
  grown.to_the_left();
  EXPECT_EQ(grown.repeat(), "[0,44) CA score 30 2M");
  EXPECT_EQ(grown.edits(), "23M 21M");
}

// Two mismatches stand side by side, but an insertion is followed by the longer run.
class ExtensionIntoATrap : public Extension {
 protected:
  CGrown grown{repeated("ACCGT", 3) + "GACGT" + repeated("ACCGT", 3), 0, 5};

  ExtensionIntoATrap() { global_mismatch_score = -4; }
};

TEST_F(ExtensionIntoATrap, OfDepthOneValuesAnEditByTheRunBehindItOnly) {
  global_maximum_recursion_depth = 1;
  grown.to_the_right();
  EXPECT_EQ(grown.edits(), "15I 18D");
  EXPECT_EQ(grown.repeat(), "[0,35) ACCGT score 19 1I 1D");
}

TEST_F(ExtensionIntoATrap, OfDepthTwoSeesTheEditBehindTheRun) {
  global_maximum_recursion_depth = 2;
  grown.to_the_right();
  EXPECT_EQ(grown.edits(), "15M 16M");
  EXPECT_EQ(grown.repeat(), "[0,35) ACCGT score 20 2M");
}

TEST_F(ExtensionIntoATrap, StartsItsLookAheadAtTheDepthOfTheRecord) {
  grown.sat.recursion_depth = 4;  // of five: one level is left
  grown.to_the_right();
  EXPECT_EQ(grown.edits(), "15I 18D");
}

TEST_F(Extension, NotesADeletionBeforeTheSymbolBehindTheGap) {
  const std::string symbols = "ACGACGACGACACGACGACG";  // the G after position 10 is missing
  CGrown to_right(symbols, 0, 3);
  to_right.to_the_right();
  EXPECT_EQ(to_right.repeat(), "[0,20) ACG score 12 1D");
  EXPECT_EQ(to_right.sat.length(), 21);
  EXPECT_EQ(to_right.edits(), "11D");
  CGrown to_left(symbols, 17, 20);
  to_left.to_the_left();
  EXPECT_EQ(to_left.repeat(), "[0,20) ACG score 12 1D");
  EXPECT_EQ(to_left.edits(), "11D");
}

TEST_F(Extension, ListsTheEditsToTheRightBeforeThoseToTheLeft) {
  const std::string block = "ACACACAC";
  CGrown grown(block + "G" + block + "G" + block + "T" + block + "T" + block, 18, 20);
  grown.to_the_right().to_the_left();
  EXPECT_EQ(grown.repeat(), "[0,44) AC score 18 4I");
  EXPECT_EQ(grown.edits(), "26I 35I 17I 8I");
}

TEST_F(Extension, KeepsTheEditsToTheRightWhenThoseToTheLeftAreGivenUp) {
  const std::string block = "ACACACAC";
  CGrown grown(std::string("ACG") + block + "G" + block + "TTTT", 3, 5);
  grown.to_the_right().to_the_left();
  EXPECT_EQ(grown.repeat(), "[3,20) AC score 9 1I");
  EXPECT_EQ(grown.edits(), "11I");
}

TEST_F(Extension, IsNeverStoppedByAnUnlimitedScoreReduction) {
  // Four mismatches in a row: only the bound at minus the unit length counts, and that is far away.
  const std::string unit = "ACGTTGCAACGGATCCTAGA";
  CGrown grown(unit + "XXXX" + unit.substr(4) + unit + unit, 0, 20);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,80) " + unit + " score 36 4M");
}

TEST_F(Extension, IsStoppedByAFiniteScoreReduction) {
  const std::string unit = "ACGTTGCAACGGATCCTAGA";
  global_maximum_scorereduction = 10;
  CGrown grown(unit + "XXXX" + unit.substr(4) + unit + unit, 0, 20);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,20) " + unit + " score 0");
}

TEST_F(Extension, MakesAnEditThatReachesTheReductionButNotOneBeyond) {
  global_maximum_scorereduction = 5;
  EXPECT_EQ(right("ACACACGACACACAC"), "[0,15) AC score 7 1I");
  global_maximum_scorereduction = 4;
  EXPECT_EQ(right("ACACACGACACACAC"), "[0,6) AC score 4");
}

TEST_F(Extension, GoesThroughFourHundredEditsAtADepthBeyondEightBits) {
  global_maximum_recursion_depth = 300;
  global_maximum_scorereduction = 5;
  CGrown grown(repeated("ACACACACACG", 400), 0, 2);
  grown.to_the_right();
  EXPECT_EQ(grown.repeat(), "[0,4399) AC score 2003 399I");
}

}  // namespace
