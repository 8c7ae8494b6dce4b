// The extension with shortcuts compared with the extension as it is defined.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CSearchController.h"
#include "support/default-parameters.h"
#include "support/fast-extension.h"
#include "support/fast-search.h"
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

void extend_as_defined(Csat& sat, const CTestRecord& record) {
  CSearchController::extend_imperfect_forward(sat, record.end());
  CSearchController::extend_imperfect_backward(sat, record.begin() - 1);
}

class ExtensionProperty : public ParameterTest, public ::testing::WithParamInterface<int> {};

TEST_P(ExtensionProperty, WithShortcutsEndsWhereItIsDefinedToEnd) {
  const int depth = GetParam();
  CRandomDna random(200U + static_cast<unsigned>(depth));
  const int rounds = depth <= 4 ? 12000 : 6000;
  int edits = 0;
  for (int round = 0; round < rounds; ++round) {
    set_random_extension_parameters(random, depth);
    const repeat_case repeat = random_repeat(random);
    const CTestRecord record(repeat.symbols);
    const char* const unit_begin = record.at(repeat.unit_begin);
    Csat expected;
    expected.reset(unit_begin, unit_begin + repeat.unit_length);
    extend_as_defined(expected, record);
    Csat sat;
    sat.reset(unit_begin, unit_begin + repeat.unit_length);
    CFastExtension fast(record.begin(), record.end());
    fast.to_the_right(sat);
    fast.to_the_left(sat);
    ASSERT_EQ(state_of(sat, record), state_of(expected, record))
        << repeat.symbols << ", unit at " << repeat.unit_begin << ", round " << round << ", " << extension_parameters();
    edits += expected.mismatches + expected.insertions + expected.deletions;
  }
  EXPECT_GT(edits, 2000);
}

// The record must be right only where the repeat is accepted.
TEST_P(ExtensionProperty, OfACandidateAcceptsWhatTheDefinitionMakesGoodEnough) {
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
    CFastSearch fast(record);
    const char* const unit_begin = record.at(repeat.unit_begin);
    Csat expected;
    expected.reset(unit_begin, unit_begin + repeat.unit_length);
    extend_as_defined(expected, record);
    expected.trim_Ns();
    const bool is_good = expected.score >= CSearchController::minScores[repeat.unit_length] &&
                         expected.length() >= CSearchController::minLengths[repeat.unit_length];
    Csat sat;
    sat.reset(unit_begin, unit_begin + repeat.unit_length);
    ASSERT_EQ(fast.controller.extend_imperfect(sat), is_good)
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
