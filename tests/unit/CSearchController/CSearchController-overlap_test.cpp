// Overlap removal.

#include <gtest/gtest.h>

#include <iterator>
#include <limits>

#include "CSearchController.h"
#include "support/search.h"

namespace {

class Overlap : public ParameterTest {
 protected:
  CTestRecord record{std::string(60, 'A')};
  CsatContainer list{sat_alloc};

  // Appends the repeat of the positions first to last, counted from 1.
  Csat* add(int first, int last, int unit_length, int score) {
    Csat* const sat = sat_alloc.get_new(record.at(first - 1), record.at(first - 1 + unit_length));
    sat->pos_right = record.at(last);
    sat->score = score;
    list.records.push_back(sat);
    return sat;
  }

  std::list<Csat*> left_over() {
    CSearchController::remove_hidden(list);
    return list.records;
  }

  using repeats = std::list<Csat*>;
};

TEST_F(Overlap, OfTwoSymbolsHidesNeitherOfTwoLongRepeats) {
  Csat* const a = add(1, 20, 2, 18);
  Csat* const b = add(19, 30, 2, 10);
  EXPECT_EQ(left_over(), (repeats{a, b}));
}

TEST_F(Overlap, WithARepeatOfHigherScoreHidesTheOneInside) {
  Csat* const a = add(1, 20, 2, 18);
  add(5, 12, 4, 4);
  EXPECT_EQ(left_over(), repeats{a});
}

TEST_F(Overlap, WithARepeatOfHigherScoreHidesTheEarlierOne) {
  add(1, 10, 2, 8);
  Csat* const b = add(2, 30, 3, 20);
  EXPECT_EQ(left_over(), repeats{b});
}

TEST_F(Overlap, OfEqualScoresRemovesTheOneThatStartsLater) {
  Csat* const a = add(1, 10, 2, 8);
  add(2, 11, 2, 8);
  EXPECT_EQ(left_over(), repeats{a});
}

TEST_F(Overlap, RemovesAllButTheFirstOfIdenticalRepeats) {
  Csat* const first = add(3, 12, 2, 8);
  add(3, 12, 2, 8);
  add(3, 12, 2, 8);
  EXPECT_EQ(left_over(), repeats{first});
}

TEST_F(Overlap, OfDuplicatesFromTheExactSearchLeavesTheFirst) {
  // A bound that is not a number is met by no repeat in the search and by every one in the report.
  global_min_perfection = std::numeric_limits<float>::quiet_NaN();
  global_remove_mostly_hidden = false;
  set_unit_lengths(1, 2);
  CSearched searched(search_mode_exact, "ACACACAC");
  ASSERT_EQ(searched.results().size(), 6U);
  global_remove_mostly_hidden = true;
  CSearchController::remove_hidden(searched.controller.result_list);
  EXPECT_EQ(searched.results(), texts{"[0,8) AC score 6"});
}

TEST_F(Overlap, IsLeftAloneWhenRemovalIsOff) {
  global_remove_mostly_hidden = false;
  Csat* const a = add(3, 12, 2, 8);
  Csat* const b = add(3, 12, 2, 8);
  EXPECT_EQ(left_over(), (repeats{a, b}));
}

TEST_F(Overlap, OfAnEmptyListIsNothing) { EXPECT_EQ(left_over(), repeats{}); }

TEST_F(Overlap, LeavesRepeatsThatTouchWithoutSharingASymbol) {
  Csat* const a = add(1, 10, 9, 1);
  Csat* const b = add(11, 20, 9, 2);
  EXPECT_EQ(left_over(), (repeats{a, b}));
}

TEST_F(Overlap, LeavesBothWhileAWholeUnitOfEachLiesOutside) {
  Csat* const a = add(1, 10, 4, 3);
  Csat* const b = add(7, 16, 4, 9);  // six symbols of each outside
  EXPECT_EQ(left_over(), (repeats{a, b}));
}

TEST_F(Overlap, CountsAUnitThatLiesOutsideExactlyAsWhole) {
  Csat* const a = add(1, 10, 4, 3);
  Csat* const b = add(5, 14, 4, 9);  // four symbols of each outside
  EXPECT_EQ(left_over(), (repeats{a, b}));
}

TEST_F(Overlap, HidesARepeatWithLessThanAUnitOutside) {
  add(1, 10, 5, 3);  // four symbols outside, the unit has five
  Csat* const b = add(5, 14, 4, 9);
  EXPECT_EQ(left_over(), repeats{b});
}

TEST_F(Overlap, RemovesTheLowerScoreEvenIfTheOtherIsTheHiddenOne) {
  add(1, 20, 2, 5);
  Csat* const hidden = add(5, 12, 2, 9);
  EXPECT_EQ(left_over(), repeats{hidden});
}

TEST_F(Overlap, ComparesARepeatWithAllThatBeginInsideIt) {
  Csat* const a = add(1, 30, 2, 20);
  add(5, 10, 2, 4);                    // hidden by a
  Csat* const b = add(12, 40, 2, 12);  // stands clear
  add(20, 25, 2, 3);                   // hidden by a
  EXPECT_EQ(left_over(), (repeats{a, b}));
}

TEST_F(Overlap, GoesOnBehindARepeatThatStays) {
  Csat* const a = add(1, 20, 2, 18);
  Csat* const b = add(15, 40, 2, 24);  // both stand clear
  add(16, 19, 2, 2);                   // hidden by a
  add(25, 30, 2, 4);                   // hidden by b
  Csat* const c = add(41, 50, 2, 8);
  EXPECT_EQ(left_over(), (repeats{a, b, c}));
}

TEST_F(Overlap, GoesOnWithTheFollowerOfARemovedRepeat) {
  add(1, 10, 2, 3);
  Csat* const b = add(2, 12, 2, 9);
  add(4, 9, 2, 4);
  EXPECT_EQ(left_over(), repeats{b});
}

TEST_F(Overlap, DependsOnSpanAndNotOnAlignedLength) {
  Csat* const a = add(1, 10, 4, 3);
  Csat* const b = add(5, 14, 4, 9);
  a->insertions = 5;
  b->deletions = 5;
  EXPECT_EQ(left_over(), (repeats{a, b}));
}

TEST_F(Overlap, ComparesScoresAsSignedNumbers) {
  add(1, 10, 2, -4);
  Csat* const b = add(2, 11, 2, 1);
  EXPECT_EQ(left_over(), repeats{b});
}

TEST_F(Overlap, ReturnsWhatItRemovesToThePoolInOrder) {
  Csat* const early = add(1, 10, 2, 3);
  add(2, 12, 2, 9);
  Csat* const late = add(4, 9, 2, 4);
  left_over();
  ASSERT_GE(sat_alloc.records.size(), 2U);
  EXPECT_EQ(sat_alloc.records.back(), late);
  EXPECT_EQ(*std::prev(sat_alloc.records.end(), 2), early);
}

}  // namespace
