// The extension compared with a plain one, step for step as it is defined.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CSearchController.h"
#include "support/default-parameters.h"
#include "support/plain-extension.h"
#include "support/random-parameters.h"
#include "support/repeats.h"
#include "support/test-record.h"

namespace {

// A sequence with a repeat in it whose unit stands at `unit_begin`.
struct repeat_case {
  std::string symbols;
  int unit_begin;
  int unit_length;
};

void mutate(CRandomDna& random, std::string& symbols, const std::string& alphabet) {
  const int place = random.number(0, static_cast<int>(symbols.size()) - 1);
  const auto at = static_cast<std::size_t>(place);
  switch (random.number(0, 3)) {
    case 0:
      symbols[at] = random.one_of(alphabet);
      break;
    case 1:
      symbols.insert(at, random.sequence(alphabet, random.number(1, 2)));
      break;
    case 2:
      symbols.erase(at, 1);
      break;
    default:
      symbols.insert(at, random.sequence("N", random.number(1, 3)));
  }
}

repeat_case random_repeat(CRandomDna& random) {
  const std::vector<std::string> alphabets{"AC", "ACGT", "AAC"};
  const std::string alphabet = random.one_of(alphabets);
  const int L = random.number(1, 5);
  std::string right = repeated(random.sequence(alphabet, L), random.number(1, 10));
  std::string left = right;
  const std::string unit = right.substr(0, static_cast<std::size_t>(L));
  for (int i = random.number(0, 5); i > 0 && !right.empty(); --i) mutate(random, right, alphabet);
  for (int i = random.number(0, 5); i > 0 && !left.empty(); --i) mutate(random, left, alphabet);
  left = random.sequence(alphabet, random.number(0, 3)) + left;
  right += random.sequence(alphabet, random.number(0, 3));
  return {left + unit + right, static_cast<int>(left.size()), L};
}

// The whole state of a record as a text: range, counts, cursors and edits.
std::string state_of(const Csat& sat, const CTestRecord& record) {
  return describe(sat, record) + " cursors " + std::to_string(sat.fwd_unit_cursor - sat.unit_begin) + " " +
         std::to_string(sat.bwd_unit_cursor - sat.unit_begin) + " edits " + edits_of(sat, record);
}

void add_counts(Csat& sat, const plain_state& side) {
  sat.score = side.score;
  sat.mismatches += side.mismatches;
  sat.insertions += side.insertions;
  sat.deletions += side.deletions;
  sat.number_of_Ns += side.Ns;
}

void extend_plainly(Csat& sat, const CTestRecord& record) {
  const int L = sat.unit_length();
  const plain_side right{sat.unit_end, 1, static_cast<int>(record.end() - sat.unit_end), sat.unit_begin, L};
  const plain_state to_right = CPlainExtension::extend(right, plain_state{}, 0);
  add_counts(sat, to_right);
  sat.pos_right = sat.unit_end + to_right.position;
  sat.fwd_unit_cursor = sat.unit_begin + to_right.u;
  for (const auto& [position, letter] : to_right.edits) sat.add_missense(sat.unit_end + position, letter);

  const plain_side left{sat.unit_begin - 1, -1, static_cast<int>(sat.unit_begin - record.begin()), sat.unit_begin, L};
  plain_state start;
  start.u = L - 1;
  start.score = sat.score;
  const plain_state to_left = CPlainExtension::extend(left, start, 0);
  add_counts(sat, to_left);
  sat.pos_left = sat.unit_begin - to_left.position;
  sat.bwd_unit_cursor = sat.unit_begin + to_left.u;
  for (const auto& [position, letter] : to_left.edits) {
    sat.add_missense(sat.unit_begin - position - (letter == 'D' ? 0 : 1), letter);
  }
}

class ExtensionProperty : public ParameterTest, public ::testing::WithParamInterface<int> {};

TEST_P(ExtensionProperty, EndsWhereThePlainExtensionEnds) {
  const int depth = GetParam();
  CRandomDna random(200U + static_cast<unsigned>(depth));
  const int rounds = depth <= 4 ? 12000 : 6000;
  std::size_t edits = 0;
  for (int round = 0; round < rounds; ++round) {
    set_random_extension_parameters(random, depth);
    const repeat_case repeat = random_repeat(random);
    const CTestRecord record(repeat.symbols);
    const char* const unit_begin = record.at(repeat.unit_begin);
    Csat expected;
    expected.reset(unit_begin, unit_begin + repeat.unit_length);
    extend_plainly(expected, record);
    Csat sat;
    sat.reset(unit_begin, unit_begin + repeat.unit_length);
    CSearchController::extend_imperfect_forward(sat, record.end());
    CSearchController::extend_imperfect_backward(sat, record.begin() - 1);
    ASSERT_EQ(state_of(sat, record), state_of(expected, record))
        << repeat.symbols << ", unit at " << repeat.unit_begin << ", round " << round << ", " << extension_parameters();
    edits += expected.mismatches + expected.insertions + expected.deletions;
  }
  EXPECT_GT(edits, 2000U);
}

// The record must be right only where the repeat is accepted.
TEST_P(ExtensionProperty, OfACandidateAcceptsWhatThePlainExtensionMakesGoodEnough) {
  const int depth = GetParam();
  CRandomDna random(300U + static_cast<unsigned>(depth));
  int accepted = 0;
  for (int round = 0; round < 4000; ++round) {
    set_random_extension_parameters(random, depth);
    const repeat_case repeat = random_repeat(random);
    global_min_score = random.number(0, 30);
    global_min_length = random.number(0, 40);
    CSearchController::reset_minimum_arrays();
    CTestRecord record(repeat.symbols);
    const CSearchController controller(1, record);
    const char* const unit_begin = record.at(repeat.unit_begin);
    Csat expected;
    expected.reset(unit_begin, unit_begin + repeat.unit_length);
    extend_plainly(expected, record);
    expected.trim_Ns();
    const bool is_good = expected.score >= CSearchController::minScores[repeat.unit_length] &&
                         expected.length() >= CSearchController::minLengths[repeat.unit_length];
    Csat sat;
    sat.reset(unit_begin, unit_begin + repeat.unit_length);
    ASSERT_EQ(controller.extend_imperfect(sat), is_good)
        << repeat.symbols << ", unit at " << repeat.unit_begin << ", round " << round << ", " << extension_parameters();
    if (!is_good) continue;
    ++accepted;
    ASSERT_EQ(state_of(sat, record), state_of(expected, record))
        << repeat.symbols << ", unit at " << repeat.unit_begin << ", round " << round << ", " << extension_parameters();
  }
  EXPECT_GT(accepted, 400);
}

INSTANTIATE_TEST_SUITE_P(Depths, ExtensionProperty, ::testing::Range(1, 7),
                         [](const auto& depth) { return "Depth" + std::to_string(depth.param); });

}  // namespace
