// The choices of the edits, and the bounds on what may still come, compared with following all paths: on every choice
// of whole extensions.

#include "edit-choice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "support/candidate-sequences.h"
#include "support/each-target.h"
#include "support/random-dna.h"

namespace {

constexpr int unlimited = std::numeric_limits<int>::max();

// The look-aheads of all three edits, as they are defined.
template <typename Direction>
class CPlainOutlook {
 public:
  CPlainOutlook(const scoring& its_rules, const CUnitText& its_unit, const char* its_end)
      : rules(its_rules), unit(its_unit), end(its_end) {}

  edit_outlook of(const extension_state& at) {
    outlook = {edit::none, 0, false};
    const int u = Direction::unit_step(at.u, unit.length());
    if (is_admissible(at.score + rules.mismatch_score)) {
      consider(edit::mismatch, {Direction::step(at.s), u, at.score + rules.mismatch_score});
    }
    if (is_admissible(at.score + rules.indel_score)) {
      consider(edit::insertion, {Direction::step(at.s), at.u, at.score + rules.indel_score});
      consider(edit::deletion, {at.s, u, at.score + rules.indel_score});
    }
    return outlook;
  }

 private:
  scoring rules;
  const CUnitText& unit;
  const char* end;
  edit_outlook outlook{};

  bool is_admissible(int score) const { return score > -unit.length() - rules.prefer_longer; }

  void consider(edit made, const extension_state& after) {
    const int value = best(after, 1);
    if (outlook.chosen != edit::none && value <= outlook.highest) return;
    outlook.chosen = made;
    outlook.highest = value;
  }

  int best(extension_state at, int depth) {
    run_on<Direction>(at, unit, end, rules.passes_over_Ns);
    if (at.s == end) return at.score;
    int value = at.score;
    const int u = Direction::unit_step(at.u, unit.length());
    const bool is_last = depth == rules.recursion_depth;
    if (is_admissible(at.score + rules.mismatch_score)) {
      outlook.is_cut |= is_last;
      if (!is_last)
        value = std::max(value, best({Direction::step(at.s), u, at.score + rules.mismatch_score}, depth + 1));
    }
    if (is_admissible(at.score + rules.indel_score)) {
      outlook.is_cut |= is_last;
      if (!is_last) {
        value = std::max(value, best({Direction::step(at.s), at.u, at.score + rules.indel_score}, depth + 1));
        value = std::max(value, best({at.s, u, at.score + rules.indel_score}, depth + 1));
      }
    }
    return value;
  }
};

struct choice_counts {
  int choices = 0;
  int known = 0;  // made by run ends alone
  int cut = 0;
};

// Goes with an extension from choice to choice, far beyond where it would end.
template <typename Direction>
class CChecker {
 public:
  CChecker(const scoring& its_rules, const CUnitText& its_unit, const char* its_end, choice_counts& its_counts)
      : rules(its_rules), unit(its_unit), end(its_end), counts(its_counts) {
    space.run_ends.set(rules, unit.length());
  }

  void go(extension_state at) {
    CPlainOutlook<Direction> plain(rules, unit, end);
    CLayeredChoice<Direction> by_layers(rules, unit, end, space.states);
    for (int steps = 0; steps < 40; ++steps) {
      run_on<Direction>(at, unit, end, rules.passes_over_Ns);
      if (at.s == end) return;
      const edit_outlook expected = plain.of(at);
      // Where layers share places, what a state with fewer edits does shows that nothing is cut.
      edit_outlook layered = by_layers.choose(at, 0);
      if (!layered.is_cut) layered.is_cut = expected.is_cut;
      check(layered, expected, "by layers");
      if (space.run_ends.applies()) {
        space.ahead.template compare<Direction>(at, unit, end, rules.passes_over_Ns, space.run_ends.radius());
        ++counts.choices;
        // Just below, at or just above what it leads to: then the edit is any one, if nothing is cut.
        const int needed = (expected.chosen == edit::none ? at.score : expected.highest) - 1 + steps % 3;
        if (space.run_ends.choose(space.ahead, at.score, needed)) {
          ++counts.known;
          edit_outlook outlook = space.run_ends.outlook();
          const bool is_of_interest = expected.highest >= needed || expected.is_cut;
          if (!is_of_interest && outlook.chosen != edit::none) outlook.chosen = expected.chosen;
          check(outlook, expected, "by run ends");
        }
      }
      if (expected.chosen == edit::none) return;
      if (::testing::Test::HasFailure()) return;
      make(at, expected.chosen);
    }
  }

 private:
  scoring rules;
  const CUnitText& unit;
  const char* end;
  choice_counts& counts;
  edit_choice_space space;

  void check(const edit_outlook& found, const edit_outlook& expected, const char* how) {
    ASSERT_EQ(static_cast<int>(found.chosen), static_cast<int>(expected.chosen)) << how;
    if (expected.chosen == edit::none) return;
    ASSERT_EQ(found.highest, expected.highest) << how;
    ASSERT_EQ(found.is_cut, expected.is_cut) << how;
    counts.cut += found.is_cut ? 1 : 0;
  }

  void make(extension_state& at, edit chosen) const {
    at.score += chosen == edit::mismatch ? rules.mismatch_score : rules.indel_score;
    if (chosen != edit::deletion) at.s = Direction::step(at.s);
    if (chosen != edit::insertion) at.u = Direction::unit_step(at.u, unit.length());
  }
};

scoring random_rules(CRandomDna& random, int depth) {
  const std::vector<std::pair<int, int>> penalties{{-5, -5}, {-5, -5}, {-3, -3}, {-2, -2},  {-4, -5},  {-5, -4},
                                                   {-2, -9}, {-9, -2}, {-7, -3}, {-60, -2}, {-2, -60}, {-61, -5}};
  const auto [mismatch, indel] = random.one_of(penalties);
  return {mismatch, indel, unlimited, random.number(0, 1), depth, random.number(0, 3) != 0, 2};
}

class EditChoice : public ::testing::TestWithParam<int> {};

// All units of a sequence, in both directions, from scores near the floor and far above it.
TEST_P(EditChoice, IsThatOfAllPathsOnEveryChoiceOfWholeExtensions) {
  const int depth = GetParam();
  choice_counts counts;
  on_each_target([&] {
    CRandomDna random(1000U + static_cast<unsigned>(depth));
    CCandidateSequences sequences(random);
    CUnitText unit;
    for (int round = 0; round < (depth <= 5 ? 14 : 5); ++round) {
      const scoring rules = random_rules(random, depth);
      const int L = random.number(1, random.coin() ? 12 : 140);
      const std::string text = sequences.make(random.number(L + 1, 500), L, random.number(6, 40));
      SCOPED_TRACE("round " + std::to_string(round) + ", L " + std::to_string(L) + ", scores " +
                   std::to_string(rules.mismatch_score) + " " + std::to_string(rules.indel_score) + ", P " +
                   std::to_string(rules.prefer_longer) + ", sequence " + text);
      const char* const begin = text.data();
      const char* const end = begin + text.size();
      for (const char* p = begin; end - p > L; p += random.number(1, 60)) {
        if (std::find(p, p + L, 'N') != p + L) continue;
        unit.set(p, p + L);
        const int score = random.coin() ? 0 : random.number(-L, random.coin() ? 40 : 400);
        CChecker<rightwards>(rules, unit, end, counts).go({p + L, 0, score});
        CChecker<leftwards>(rules, unit, begin, counts).go({p, L - 1, score});
        if (HasFailure()) return;
      }
    }
  });
  EXPECT_GT(counts.known, counts.choices * 7 / 10);
  const auto targets = static_cast<int>(tested_targets().size());
  EXPECT_GT(counts.known, 300 * targets);
  EXPECT_GT(counts.cut, 100 * targets);
}

INSTANTIATE_TEST_SUITE_P(Depths, EditChoice, ::testing::Range(1, CRunEnds::most_edits + 1),
                         [](const auto& depth) { return "Depth" + std::to_string(depth.param); });

TEST(RunEnds, ApplyWithinTheirPremisesAlone) {
  const scoring rules{-5, -4, unlimited, 1, 5, true, 2};
  CRunEnds run_ends;
  const auto apply_with = [&](auto change) {
    scoring changed = rules;
    change(changed);
    run_ends.set(changed, 10);
    return run_ends.applies();
  };
  EXPECT_TRUE(apply_with([](scoring&) {}));
  EXPECT_TRUE(apply_with([](scoring& r) { r.recursion_depth = 7; }));
  EXPECT_TRUE(apply_with([](scoring& r) { r.indel_score = -60; }));
  EXPECT_FALSE(apply_with([](scoring& r) { r.recursion_depth = 8; }));
  EXPECT_FALSE(apply_with([](scoring& r) { r.recursion_depth = 0; }));
  EXPECT_FALSE(apply_with([](scoring& r) { r.score_reduction = 1000; }));
  EXPECT_FALSE(apply_with([](scoring& r) { r.mismatch_score = -61; }));
  EXPECT_FALSE(apply_with([](scoring& r) { r.indel_score = 0; }));
}

}  // namespace
