// Choices that are remembered, compared with those made anew on every choice of whole extensions, where extensions
// before them have left what they found.

#include "remembered-choices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "edit-choice.h"
#include "support/candidate-sequences.h"
#include "support/random-dna.h"

namespace {

using place = CRememberedChoices::place;

TEST(RememberedChoices, AreFoundUntilTheyAreForgotten) {
  const std::string record(100, 'A');
  const place at{record.data() + 50, 20};
  CRememberedChoices remembered;
  EXPECT_EQ(remembered.find(at), nullptr);
  remembered.keep(at, {7, edit::deletion});
  ASSERT_NE(remembered.find(at), nullptr);
  EXPECT_EQ(remembered.find(at)->reach, 7);
  EXPECT_EQ(remembered.find(at)->chosen, edit::deletion);
  EXPECT_EQ(remembered.find({at.s + 1, at.distance}), nullptr);
  EXPECT_EQ(remembered.find({at.s, -at.distance}), nullptr);
  remembered.forget();
  EXPECT_EQ(remembered.find(at), nullptr);
}

TEST(RememberedChoices, AreNeverThoseOfAnotherPlace) {
  const std::string record(5000, 'A');
  CRememberedChoices remembered;
  CRandomDna random(5);
  const auto reach_of = [&](const place& at) {
    return static_cast<std::uint16_t>((at.s - record.data()) * 13 + at.distance);
  };
  for (int i = 0; i < 100000; ++i) {
    const place at{record.data() + random.number(0, 4999), random.number(-1000, 1000)};
    if (const auto* const found = remembered.find(at)) {
      ASSERT_EQ(found->reach, reach_of(at));
    }
    remembered.keep(at, {reach_of(at), edit::insertion});
  }
}

struct counts {
  int choices = 0;
  int known = 0;
};

// Goes with an extension from choice to choice, far beyond where it would end.
template <typename Direction>
void check_extension(const scoring& rules, const CUnitText& unit, const char* end, edit_choice_space& space,
                     extension_state at, counts& counted) {
  constexpr int none_needed = std::numeric_limits<int>::min();
  CEditChoice<Direction> choice(rules, unit, end, space);
  layered_states states;
  CLayeredChoice<Direction> anew(rules, unit, end, states);
  for (int steps = 0; steps < 400; ++steps) {
    run_on<Direction>(at, unit, end, rules.passes_over_Ns);
    if (at.s == end) return;
    const char* const symbol = Direction::first_of(at.s, 1);
    const auto distance = static_cast<std::int32_t>(symbol - (unit.origin() + at.u));
    counted.known += space.remembered.find({at.s, distance}) != nullptr ? 1 : 0;
    ++counted.choices;
    const edit expected = anew.choose(at, 0).chosen;
    ASSERT_EQ(static_cast<int>(choice.choose(at, 0, none_needed)), static_cast<int>(expected))
        << "position " << end - at.s << " in front of the end, cursor " << at.u << ", score " << at.score;
    if (expected == edit::none) return;
    at.score += expected == edit::mismatch ? rules.mismatch_score : rules.indel_score;
    if (expected != edit::deletion) at.s = Direction::step(at.s);
    if (expected != edit::insertion) at.u = Direction::unit_step(at.u, unit.length());
  }
}

class RememberedChoicesOfUnits : public ::testing::TestWithParam<int> {};

// All units next to each other, in both directions, from scores near the floor and far above it.
TEST_P(RememberedChoicesOfUnits, AreThoseMadeAnew) {
  const int depth = GetParam();
  const std::vector<std::pair<int, int>> penalties{{-5, -5}, {-5, -5}, {-3, -3}, {-2, -2}, {-4, -5}, {-9, -2}};
  CRandomDna random(2000U + static_cast<unsigned>(depth));
  CCandidateSequences sequences(random);
  CUnitText unit;
  counts counted;
  for (int round = 0; round < 12; ++round) {
    const auto [mismatch, indel] = random.one_of(penalties);
    const scoring rules{
        mismatch, indel, std::numeric_limits<int>::max(), random.number(0, 1), depth, random.number(0, 3) != 0, 2};
    const int period = random.number(40, 130);
    const std::string text = sequences.make(900, period, random.number(6, 40));
    SCOPED_TRACE("round " + std::to_string(round) + ", period " + std::to_string(period) + ", scores " +
                 std::to_string(mismatch) + " " + std::to_string(indel) + ", sequence " + text);
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    edit_choice_space space;
    for (const int L : {period, period + 1, std::max(period - 2, 1), 2 * period}) {
      const int first = random.number(0, 300);
      for (const char* p = begin + first; p < begin + first + 12; ++p) {
        if (std::find(p, p + L, 'N') != p + L) continue;
        unit.set(p, p + L);
        const int score = random.coin() ? 0 : random.number(-L, 100);
        check_extension<rightwards>(rules, unit, end, space, {p + L, 0, score}, counted);
        check_extension<leftwards>(rules, unit, begin, space, {p, L - 1, score}, counted);
        if (HasFailure()) return;
      }
    }
  }
  EXPECT_GT(counted.choices, 1000);
  if (depth <= 5) {
    EXPECT_GT(counted.known, counted.choices / 10);
  }
}

INSTANTIATE_TEST_SUITE_P(Depths, RememberedChoicesOfUnits, ::testing::Values(1, 2, 3, 4, 5, 6, 7, 9),
                         [](const auto& depth) { return "Depth" + std::to_string(depth.param); });

}  // namespace
