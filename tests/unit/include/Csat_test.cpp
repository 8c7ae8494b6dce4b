#include "Csat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "CSearchController.h"
#include "CsatContainer.h"
#include "support/default-parameters.h"
#include "support/repeats.h"
#include "support/stream-text.h"
#include "support/test-record.h"

namespace {

class CsatTest : public ParameterTest {
 protected:
  CTestRecord record{"ACGTACGTACNNACGTACGTACGT"};
  Csat sat;

  // The single copy of a unit of L symbols at the start of the record.
  void set_unit(int L) { sat.reset(record.begin(), record.at(L)); }

  std::string printed_name() const {
    return text_of([this](std::FILE* out) { sat.print_repeat_name(out); });
  }
};

TEST_F(CsatTest, LengthIsTheSpanWithoutInsertionsAndWithDeletions) {
  set_unit(2);
  sat.pos_right = record.at(15);
  sat.insertions = 3;
  sat.deletions = 1;
  EXPECT_EQ(sat.unit_length(), 2);
  EXPECT_EQ(sat.span(), 15);
  EXPECT_EQ(sat.length(), 13);
}

TEST_F(CsatTest, UnitsOfOneToSixSymbolsHaveNames) {
  const char* const names[] = {"mononucleotide",  "dinucleotide",    "trinucleotide",
                               "tetranucleotide", "pentanucleotide", "hexanucleotide"};
  for (int L = 1; L <= 6; ++L) {
    set_unit(L);
    EXPECT_STREQ(sat.get_repeat_name(), names[L - 1]);
  }
}

TEST_F(CsatTest, AUnitOfSevenSymbolsIsNamedByItsLength) {
  set_unit(7);
  EXPECT_STREQ(sat.get_repeat_name(), "7-nucleotide");
}

TEST_F(CsatTest, AUnitOfNoSymbolsHasTheErrorName) {
  set_unit(0);
  EXPECT_STREQ(sat.get_repeat_name(), "***  ERROR  ***");
}

TEST_F(CsatTest, NamesArePrintedRightAlignedInSixteenPlaces) {
  set_unit(2);
  EXPECT_EQ(printed_name(), "    dinucleotide");
  set_unit(5);
  EXPECT_EQ(printed_name(), " pentanucleotide");
}

TEST_F(CsatTest, LengthsInNamesArePrintedRightAlignedInFivePlaces) {
  set_unit(7);
  EXPECT_EQ(printed_name(), "    7-nucleotide");
  set_unit(12);
  EXPECT_EQ(printed_name(), "   12-nucleotide");
}

TEST_F(CsatTest, TheFifthEditRaisesTheCapacityFromFourToEight) {
  set_unit(2);
  sat.add_missense(record.at(0), 'M');
  EXPECT_EQ(sat.missense_capacity, 4U);
  for (int i = 1; i < 4; ++i) sat.add_missense(record.at(i), 'I');
  EXPECT_EQ(sat.missense_capacity, 4U);
  sat.add_missense(record.at(4), 'D');
  EXPECT_EQ(sat.missense_capacity, 8U);
  EXPECT_EQ(edits_of(sat, record), "0M 1I 2I 3I 4D");
}

TEST_F(CsatTest, EditsAreSortedByPositionAndThenByLetter) {
  set_unit(2);
  const struct {
    int position;
    char letter;
  } edits[] = {{9, 'M'}, {3, 'M'}, {3, 'D'}, {9, 'I'}, {3, 'I'}, {0, 'M'}, {9, 'D'}, {9, 'D'}};
  for (const auto& edit : edits) sat.add_missense(record.at(edit.position), edit.letter);
  sat.sort_missense();
  EXPECT_EQ(edits_of(sat, record), "0M 3D 3I 3M 9D 9D 9I 9M");
}

TEST_F(CsatTest, AMissingEditListSortsAsEmpty) {
  set_unit(2);
  sat.sort_missense();
  EXPECT_EQ(edits_of(sat, record), "");
}

TEST_F(CsatTest, TrimmingTakesNsFromTheRightEndAndStepsItsCursorBack) {
  sat.reset(record.at(0), record.at(4));  // ACGT, up to the N's at 10 and 11
  sat.pos_right = record.at(12);
  sat.fwd_unit_cursor = record.at(0);  // after 12 symbols of a unit of 4
  sat.number_of_Ns = 2;
  sat.trim_Ns();
  EXPECT_EQ(describe(sat, record), "[0,10) ACGT score 0");
  EXPECT_EQ(sat.fwd_unit_cursor, record.at(2));
}

TEST_F(CsatTest, TrimmingTakesNsFromTheLeftEndAndStepsItsCursorForward) {
  sat.reset(record.at(12), record.at(16));  // ACGT, down to the N's at 10 and 11
  sat.pos_left = record.at(10);
  sat.bwd_unit_cursor = record.at(13);
  sat.number_of_Ns = 2;
  sat.trim_Ns();
  EXPECT_EQ(describe(sat, record), "[12,16) ACGT score 0");
  EXPECT_EQ(sat.bwd_unit_cursor, record.at(15));
}

TEST_F(CsatTest, TrimmingWrapsTheLeftCursorAtTheUnitsEnd) {
  sat.reset(record.at(12), record.at(16));
  sat.pos_left = record.at(10);
  sat.bwd_unit_cursor = record.at(15);
  sat.trim_Ns();
  EXPECT_EQ(sat.bwd_unit_cursor, record.at(13));
}

TEST_F(CsatTest, TrimmingTouchesNeitherScoreNorEdits) {
  sat.reset(record.at(8), record.at(10));
  sat.pos_right = record.at(12);
  sat.number_of_Ns = 1;
  sat.score = 5;
  sat.mismatches = 1;
  sat.add_missense(record.at(11), 'M');
  sat.trim_Ns();
  EXPECT_EQ(describe(sat, record), "[8,10) AC score 5 1M -1N");
  EXPECT_EQ(edits_of(sat, record), "11M");
}

class Perfection : public CsatTest {
 protected:
  // 20 symbols with one edit of each kind and 4 N's: 20 symbols long, of which 17 or 13 match.
  Perfection() {
    set_unit(2);
    sat.pos_right = record.at(20);
    sat.mismatches = sat.insertions = sat.deletions = 1;
    sat.number_of_Ns = 4;
  }
};

TEST_F(Perfection, CountsNsAsMismatches) {
  global_N_and_perfection_mode = Ns_as_mismatch;
  EXPECT_FLOAT_EQ(sat.perfection(), 65.0F);
}

TEST_F(Perfection, LeavesNsOut) {
  global_N_and_perfection_mode = Ns_as_neutral;
  EXPECT_FLOAT_EQ(sat.perfection(), 81.25F);
}

TEST_F(Perfection, CountsNsAsMatches) {
  global_N_and_perfection_mode = Ns_as_match;
  EXPECT_FLOAT_EQ(sat.perfection(), 85.0F);
}

TEST_F(Perfection, IsFormedInSinglePrecision) {
  sat.mismatches = 3;
  sat.insertions = sat.deletions = sat.number_of_Ns = 0;
  sat.pos_right = record.at(19);
  const float quotient = 16.0F / 19.0F;
  EXPECT_EQ(sat.perfection(), quotient * 100.0F);
}

TEST_F(Perfection, MayBeNegative) {
  sat.pos_right = record.at(2);
  EXPECT_FLOAT_EQ(sat.perfection(), -250.0F);
}

TEST_F(Perfection, OfNothingButNsIsNotANumberAndIsReported) {
  global_N_and_perfection_mode = Ns_as_neutral;
  sat.pos_right = record.at(4);
  sat.mismatches = sat.insertions = sat.deletions = 0;
  EXPECT_TRUE(std::isnan(sat.perfection()));
  EXPECT_TRUE(Csat::is_reported_perfection(sat.perfection()));
}

TEST_F(Perfection, BoundsAreInclusive) {
  global_min_perfection = 60.0F;
  global_max_perfection = 80.0F;
  const float infinity = std::numeric_limits<float>::infinity();
  EXPECT_TRUE(Csat::is_reported_perfection(60.0F));
  EXPECT_TRUE(Csat::is_reported_perfection(80.0F));
  EXPECT_FALSE(Csat::is_reported_perfection(std::nextafter(60.0F, 0.0F)));
  EXPECT_FALSE(Csat::is_reported_perfection(std::nextafter(80.0F, infinity)));
}

TEST_F(Perfection, OfAnUnknownModeEndsTheProcessWithStatusTwo) {
  global_N_and_perfection_mode = 3;
  EXPECT_EXIT((void)sat.perfection(), ::testing::ExitedWithCode(2), "^$");
}

TEST(LessThanSat, OrdersByStartThenByEnd) {
  const CTestRecord record("ACACACAC");
  Csat early;
  Csat longer;
  Csat late;
  early.reset(record.at(0), record.at(2));
  longer.reset(record.at(0), record.at(3));
  late.reset(record.at(1), record.at(2));
  EXPECT_TRUE(lessThan_sat(&early, &longer));
  EXPECT_FALSE(lessThan_sat(&longer, &early));
  EXPECT_TRUE(lessThan_sat(&longer, &late));
  EXPECT_FALSE(lessThan_sat(&late, &longer));
  EXPECT_FALSE(lessThan_sat(&early, &early));
}

}  // namespace
