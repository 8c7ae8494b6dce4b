// The bound of one candidate by following its paths, compared with the same bound as a dynamic programme and with the
// extension itself.

#include "path-bound.h"

#include <gtest/gtest.h>

#include <string>

#include "support/candidate-sequences.h"
#include "support/default-parameters.h"
#include "support/filter-check.h"
#include "support/sanitizers.h"

namespace {

CPositionSet keep(const filter_case& c) {
  const std::vector<char> exact(c.symbols.begin(), c.symbols.end());  // so that a sanitizer notices reading beyond it
  const char* const begin = exact.data();
  CPathBound bound(current_scoring(), begin, begin + exact.size());
  CUnitText unit;
  CPositionSet kept(c.symbols.size());
  for (const std::size_t p : candidate_positions(c.symbols, c.L)) {
    Csat sat;
    sat.reset(begin + p, begin + p + c.L);
    unit.set(sat.unit_begin, sat.unit_end);
    if (bound.may_reach(sat, unit, CSearchController::minScores[c.L])) kept.add(p);
  }
  return kept;
}

class PathBound : public ParameterTest {
 protected:
  filter_counts counts;

  void check(const filter_case& c, yardstick by) { check_filter(c, by, keep, counts); }
};

TEST_F(PathBound, KeepsWhatCanBeAcceptedUnderManySettings) {
  CRandomDna random(1);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(250) && !HasFailure(); ++round) {
    const int L = random.number(1, random.one_of(std::vector<int>{10, 10, 30, 60, 120}));
    const candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(L));
    settings.put_in_force();
    const int T = CSearchController::minScores[L];
    check({settings, static_cast<unsigned>(L), sequences.make(random.number(0, 700), L, T)},
          yardstick::bound_and_extension);
  }
  EXPECT_GT(counts.wanted, tried(10000U));
}

TEST_F(PathBound, KeepsWhatCanBeAcceptedInRecordsOfEveryLength) {
  CRandomDna random(2);
  CCandidateSequences sequences(random);
  for (int length = 0; length <= 400 && !HasFailure(); ++length) {
    candidate_settings settings;
    settings.Ns_are_missense = random.number(0, 3) == 0;
    settings.put_in_force();
    const int L = random.number(1, 10);
    check({settings, static_cast<unsigned>(L), sequences.make(length, L, 6)}, yardstick::bound_and_extension);
  }
  EXPECT_GT(counts.wanted, 1000U);
}

// Scores as low as the plain extension can add them up.
TEST_F(PathBound, KeepsWhatCanBeAcceptedWithExtremeScores) {
  CRandomDna random(3);
  CCandidateSequences sequences(random);
  constexpr int lowest = -2147483000;
  for (const int mismatch_score : {-2, -1000000, lowest}) {
    for (const int indel_score : {-2, -1000000, lowest}) {
      for (const int min_score : {lowest, 0, 12}) {
        candidate_settings settings;
        settings.mismatch_score = mismatch_score;
        settings.indel_score = indel_score;
        settings.min_score = min_score;
        settings.min_score_b = 0;
        settings.recursion_depth = 3;
        settings.put_in_force();
        check({settings, 4, sequences.make(200, 4, 12)}, yardstick::bound_and_extension);
      }
    }
  }
  EXPECT_GT(counts.wanted, 1000U);
}

// It is the bound itself but for trees of paths that it does not follow to the end.
TEST_F(PathBound, DropsNearlyAllThatTheBoundRefuses) {
  CRandomDna random(4);
  candidate_settings settings;
  settings.put_in_force();
  for (unsigned L = 1; L <= 10; ++L) {
    counts = {};
    check({settings, L, random.sequence("ACGT", 3000)}, yardstick::bound);
    EXPECT_LT(counts.share_of_unwanted_kept(), 0.01) << L;
  }
}

}  // namespace
