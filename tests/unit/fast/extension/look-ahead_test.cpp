// The look-ahead of the imperfect extension.

#include "look-ahead.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "CSearchController.h"
#include "search-settings.h"
#include "support/default-parameters.h"
#include "support/random-dna.h"
#include "support/random-parameters.h"
#include "support/test-record.h"

namespace {

class LookAhead : public ParameterTest {
 protected:
  // To the right from position s of the symbols, with the unit's position u next.
  static int forward(const CTestRecord& record, int s, const std::string& unit, int u, int score,
                     unsigned char depth = 1, int best = 0) {
    return value<rightwards>(record.at(s), record.end(), unit, u, score, depth, best);
  }

  // To the left from the symbol before position s.
  static int backward(const CTestRecord& record, int s, const std::string& unit, int u, int score,
                      unsigned char depth = 1, int best = 0) {
    return value<leftwards>(record.at(s), record.begin(), unit, u, score, depth, best);
  }

 private:
  template <typename Direction>
  static int value(const char* s, const char* end, const std::string& unit, int u, int score, unsigned char depth,
                   int best) {
    CUnitText text;
    text.set(unit.data(), unit.data() + unit.size());
    look_ahead_workspace space;
    return CLookAhead<Direction>(current_scoring(), text, end, space).value({s, u, score}, depth, best);
  }
};

TEST_F(LookAhead, AtTheEndOfTheSequenceIsTheScore) {
  const CTestRecord record("ACAC");
  EXPECT_EQ(forward(record, 4, "AC", 0, -3), -3);
  EXPECT_EQ(backward(record, 0, "AC", 1, -3), -3);
}

TEST_F(LookAhead, CountsAPerfectRunToTheEnd) {
  const CTestRecord record("ACACAC");
  EXPECT_EQ(forward(record, 0, "AC", 0, 2), 8);
  EXPECT_EQ(backward(record, 6, "AC", 1, 2), 8);
}

TEST_F(LookAhead, OfTheThreeEditsAtAnInsertedSymbol) {
  const CTestRecord record("ACACACGACACACAC");           // score 4 before the G
  EXPECT_EQ(forward(record, 7, "AC", 1, -1, 1, 4), -1);  // mismatch
  EXPECT_EQ(forward(record, 7, "AC", 0, -1, 1, 4), 7);   // insertion
  EXPECT_EQ(forward(record, 6, "AC", 1, -1, 1, 4), -1);  // deletion
}

TEST_F(LookAhead, OfTheThreeEditsAtAnInsertedSymbolToTheLeft) {
  const CTestRecord record("ACACACACGACACAC");            // score 4 after the G
  EXPECT_EQ(backward(record, 8, "AC", 0, -1, 1, 4), -1);  // mismatch
  EXPECT_EQ(backward(record, 8, "AC", 1, -1, 1, 4), 7);   // insertion
  EXPECT_EQ(backward(record, 9, "AC", 0, -1, 1, 4), -1);  // deletion
}

TEST_F(LookAhead, PassesARunOfThreeNsWhereTwoAreAllowed) {
  const CTestRecord record("NNNCAC");
  EXPECT_EQ(forward(record, 0, "AC", 0, 1), 4);
  const CTestRecord reversed("ACANNN");
  EXPECT_EQ(backward(reversed, 6, "AC", 1, 1), 4);
}

TEST_F(LookAhead, StopsAtAnNWhenNsAreMissense) {
  const CTestRecord record("ANA");
  EXPECT_EQ(forward(record, 0, "AC", 0, 0), 2);
  global_treat_Ns_as_missense = true;
  EXPECT_EQ(forward(record, 0, "AC", 0, 0), 1);
}

TEST_F(LookAhead, OfDepthOneIsThePerfectRunThatFollows) {
  const CTestRecord record("ACACACGACACACACAC");
  global_maximum_recursion_depth = 1;
  EXPECT_EQ(forward(record, 0, "AC", 0, 0), 6);
  global_maximum_recursion_depth = 2;
  EXPECT_EQ(forward(record, 0, "AC", 0, 0), 6 - 5 + 10);
}

TEST_F(LookAhead, CountsEditsUpToItsDepth) {
  const CTestRecord record(
      "ACACACAC"
      "G"
      "ACACACAC"
      "G"
      "ACACACAC"
      "G"
      "ACACACAC");
  for (int depth = 1; depth <= 4; ++depth) {
    global_maximum_recursion_depth = depth;
    EXPECT_EQ(forward(record, 0, "AC", 0, 0), 8 + 3 * (depth - 1));
  }
}

TEST_F(LookAhead, ReturnsTheBestRunEndAndNotTheLast) {
  const CTestRecord record("ACACACACGACTT");
  EXPECT_EQ(forward(record, 0, "AC", 0, 0), 8);
}

TEST_F(LookAhead, MakesNoEditThatFallsToTheBound) {
  const CTestRecord record("ACACGACACACAC");  // score 4 before the G
  global_maximum_scorereduction = 4;
  EXPECT_EQ(forward(record, 0, "AC", 0, 0), 4);  // 4 - 5 is not above 4 - 4 - 1
  global_maximum_scorereduction = 5;
  EXPECT_EQ(forward(record, 0, "AC", 0, 0), 4 - 5 + 8);
}

TEST_F(LookAhead, MeasuresTheReductionFromTheBestScoreMetBefore) {
  const CTestRecord record("ACACGACACACAC");
  global_maximum_scorereduction = 6;
  EXPECT_EQ(forward(record, 0, "AC", 0, 0, 1, 5), 7);
  EXPECT_EQ(forward(record, 0, "AC", 0, 0, 1, 6), 4);
}

// The value of a path of blocks of ten matches with an inserted symbol between them.
std::string blocks_with_insertions(int blocks) { return repeated("ACACACACACG", blocks); }

TEST_F(LookAhead, OfADepthBeyondEightBitsIsLimitedByTheScoreOnly) {
  const CTestRecord record(blocks_with_insertions(400));
  global_maximum_scorereduction = 5;
  global_maximum_recursion_depth = 255;  // 254 edits after the one being valued
  EXPECT_EQ(forward(record, 0, "AC", 0, 0), 10 + 5 * 254);
  global_maximum_recursion_depth = 300;
  EXPECT_EQ(forward(record, 0, "AC", 0, 0), 10 + 5 * 399);
}

TEST_F(LookAhead, OfGreatDepthAndUnlimitedReductionEnds) {
  const CTestRecord record(blocks_with_insertions(20));
  global_maximum_recursion_depth = 300;
  EXPECT_EQ(forward(record, 0, "AC", 0, 0), 10 + 5 * 19);
  EXPECT_EQ(backward(record, 219, "AC", 1, 0), 10 + 5 * 19);
}

class LookAheadProperty : public LookAhead, public ::testing::WithParamInterface<int> {};

// The random state to value, written for a failure.
struct trial {
  std::string symbols;
  std::string unit;
  int s;
  int u;
  int score;
  int depth;
  int best;
};

trial random_trial(CRandomDna& random, int depth) {
  const std::vector<std::string> alphabets{"AC", "ACN", "ACGT", "ACGTN", "AAAAC"};
  const std::string alphabet = random.one_of(alphabets);
  trial t;
  t.symbols = random.sequence(alphabet, random.number(0, 16));
  t.unit = random.sequence("AC", random.number(1, 6));
  t.s = random.number(0, static_cast<int>(t.symbols.size()));
  t.u = random.number(0, static_cast<int>(t.unit.size()) - 1);
  t.score = random.number(-4, 30);
  t.depth = random.number(1, depth);
  t.best = t.score + random.number(0, 12);
  return t;
}

std::ostream& operator<<(std::ostream& out, const trial& t) {
  return out << t.symbols << " from " << t.s << ", unit " << t.unit << " from " << t.u << ", score " << t.score
             << ", at depth " << t.depth << ", best " << t.best << ", " << extension_parameters();
}

TEST_P(LookAheadProperty, HasTheValueOfTheDefinedRecursionInBothDirections) {
  const int depth = GetParam();
  CRandomDna random(100U + static_cast<unsigned>(depth));
  int gains = 0;
  for (int round = 0; round < 20000; ++round) {
    set_random_extension_parameters(random, depth);
    const trial t = random_trial(random, depth);
    const CTestRecord record(t.symbols);
    const char* const unit = t.unit.data();
    const int L = static_cast<int>(t.unit.size());
    const auto start_depth = static_cast<unsigned char>(t.depth);
    const int value = CSearchController::extend_imperfect_forward_leap_ahead(
        record.at(t.s), unit + t.u, unit, unit + L, t.score, L, start_depth, record.end(), t.best);
    gains += value > t.score ? 1 : 0;
    ASSERT_EQ(forward(record, t.s, t.unit, t.u, t.score, start_depth, t.best), value)
        << "to the right, round " << round << ": " << t;
    ASSERT_EQ(backward(record, t.s, t.unit, t.u, t.score, start_depth, t.best),
              CSearchController::extend_imperfect_backward_leap_ahead(
                  record.at(t.s), unit + t.u, unit, unit + L, t.score, L, start_depth, record.begin() - 1, t.best))
        << "to the left, round " << round << ": " << t;
  }
  EXPECT_GT(gains, 5000);
}

INSTANTIATE_TEST_SUITE_P(Depths, LookAheadProperty, ::testing::Range(1, 7),
                         [](const auto& depth) { return "Depth" + std::to_string(depth.param); });

}  // namespace
