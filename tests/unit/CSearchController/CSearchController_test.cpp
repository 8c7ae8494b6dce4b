// Set-up of the search: thresholds, ownership.

#include "CSearchController.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "results-texts.h"
#include "support/default-parameters.h"
#include "support/repeats.h"
#include "support/test-record.h"

namespace {

class Thresholds : public ParameterTest {
 protected:
  CTestRecord record{"ACGT"};

  // Builds the arrays from the parameters in force.
  void build() {
    CSearchController::reset_minimum_arrays();
    const CSearchController controller(1, record);
  }
};

TEST_F(Thresholds, OfTheScoreAreTheLargerOfTheConstantAndTheRoundedUpLine) {
  global_min_score = 3;
  global_min_score_a = 0;
  global_min_score_bx = 0.5F;
  build();
  EXPECT_EQ(CSearchController::minScores_user[5], 3);
  EXPECT_EQ(CSearchController::minScores_user[9], 5);
  EXPECT_EQ(CSearchController::minScores_user[10], 5);
}

TEST_F(Thresholds, OfTheLengthFollowTheSameRule) {
  global_min_length = 12;
  global_min_length_a = 4;
  global_min_length_bx = 1.25F;
  build();
  EXPECT_EQ(CSearchController::minLengths_user[0], 12);
  EXPECT_EQ(CSearchController::minLengths_user[6], 12);   // 11.5
  EXPECT_EQ(CSearchController::minLengths_user[7], 13);   // 12.75
  EXPECT_EQ(CSearchController::minLengths_user[10], 17);  // 16.5
}

TEST_F(Thresholds, OfTheDefaultsAreSixAndThenTheUnitLength) {
  build();
  for (int L = 0; L <= 10; ++L) {
    EXPECT_EQ(CSearchController::minScores_user[L], L < 6 ? 6 : L);
    EXPECT_EQ(CSearchController::minLengths_user[L], 0);
  }
}

TEST_F(Thresholds, WithANegativeSlopeFallToTheConstantAndNotBelow) {
  global_min_score = 4;
  global_min_score_a = 8;
  global_min_score_bx = -1.5F;
  global_min_length = -2;
  global_min_length_a = 1;
  global_min_length_bx = -1.0F;
  build();
  EXPECT_EQ(CSearchController::minScores_user[1], 7);  // 6.5
  EXPECT_EQ(CSearchController::minScores_user[2], 5);
  EXPECT_EQ(CSearchController::minScores_user[3], 4);
  EXPECT_EQ(CSearchController::minScores_user[10], 4);
  EXPECT_EQ(CSearchController::minLengths_user[2], -1);
  EXPECT_EQ(CSearchController::minLengths_user[10], -2);
}

TEST_F(Thresholds, AreFormedInSinglePrecision) {
  global_min_score = 0;
  global_min_score_bx = 1.1F;  // a little more than 1.1, but ten times it is 11 in single precision
  build();
  EXPECT_EQ(CSearchController::minScores_user[10], 11);
}

TEST_F(Thresholds, ThatWouldOverflowSaturate) {
  global_min_score_bx = 1.0e30F;
  global_min_length = std::numeric_limits<int>::min();
  global_min_length_bx = -1.0e30F;
  build();
  EXPECT_EQ(CSearchController::minScores_user[0], 6);
  EXPECT_EQ(CSearchController::minScores_user[1], std::numeric_limits<int>::max());
  EXPECT_EQ(CSearchController::minLengths_user[1], std::numeric_limits<int>::min());
}

TEST_F(Thresholds, OfSeedsAreFourAndThenTheUnitLength) {
  build();
  const int expected[] = {4, 4, 4, 4, 4, 5, 6, 7, 8, 9, 10};
  for (int L = 0; L <= 10; ++L) {
    EXPECT_EQ(CSearchController::minScores_intern[L], expected[L]);
    EXPECT_EQ(CSearchController::minLengths_intern[L], 0);
  }
}

TEST_F(Thresholds, ReachUpToTheMaximumUnitLength) {
  global_max_unit_length = 10000;
  build();
  EXPECT_EQ(CSearchController::minScores_user[10000], 10000);
  EXPECT_EQ(CSearchController::minScores_intern[10000], 10000);
}

TEST_F(Thresholds, AreNotBuiltAgainByASecondController) {
  build();
  const int* const scores = CSearchController::minScores_user;
  global_min_score = 100;
  global_min_length = 100;
  const CSearchController second(2, record);
  EXPECT_EQ(CSearchController::minScores_user, scores);
  EXPECT_EQ(CSearchController::minScores_user[1], 6);
  EXPECT_EQ(CSearchController::minLengths_user[1], 0);
}

TEST_F(Thresholds, OfTheUserAreInForceAfterEveryConstruction) {
  build();
  CSearchController::minScores = CSearchController::minScores_intern;
  CSearchController::minLengths = CSearchController::minLengths_intern;
  const CSearchController second(2, record);
  EXPECT_EQ(CSearchController::minScores, CSearchController::minScores_user);
  EXPECT_EQ(CSearchController::minLengths, CSearchController::minLengths_user);
}

TEST_F(Thresholds, AreForgottenByAResetAndBuiltFromTheNewParameters) {
  build();
  CSearchController::reset_minimum_arrays();
  EXPECT_EQ(CSearchController::minScores, nullptr);
  EXPECT_EQ(CSearchController::minLengths, nullptr);
  EXPECT_EQ(CSearchController::minScores_user, nullptr);
  EXPECT_EQ(CSearchController::minLengths_user, nullptr);
  EXPECT_EQ(CSearchController::minScores_intern, nullptr);
  EXPECT_EQ(CSearchController::minLengths_intern, nullptr);
  global_min_score = 100;
  const CSearchController controller(1, record);
  EXPECT_EQ(CSearchController::minScores[1], 100);
}

class Controller : public ParameterTest {
 protected:
  CTestRecord record{"ACGTACGT"};

  Csat* repeat(int left) { return sat_alloc.get_new(record.at(left), record.at(left + 2)); }
};

TEST_F(Controller, StartsEmptyOnItsRecord) {
  const CSearchController controller(12, record);
  EXPECT_EQ(controller.sequence_number, 12U);
  EXPECT_EQ(&controller.sequence, &record);
  EXPECT_TRUE(controller.result_list.records.empty());
  EXPECT_TRUE(controller.work_list.records.empty());
  EXPECT_EQ(controller.result_list.pool, &sat_alloc);
  EXPECT_EQ(controller.work_list.pool, &sat_alloc);
}

TEST_F(Controller, ReturnsItsRecordsToThePoolThoseOfTheWorkListFirst) {
  std::vector<Csat*> expected;
  {
    CSearchController controller(1, record);
    Csat* const in_results = repeat(0);
    controller.result_list.records.push_back(in_results);
    for (int i = 1; i < 3; ++i) {
      controller.work_list.records.push_back(repeat(i));
      expected.push_back(controller.work_list.records.back());
    }
    expected.push_back(in_results);
  }
  ASSERT_GE(sat_alloc.records.size(), 3U);
  EXPECT_EQ(std::vector<Csat*>(std::prev(sat_alloc.records.end(), 3), sat_alloc.records.end()), expected);
}

}  // namespace
