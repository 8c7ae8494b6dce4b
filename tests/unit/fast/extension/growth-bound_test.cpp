#include "growth-bound.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CSearchController.h"
#include "support/default-parameters.h"
#include "support/random-parameters.h"
#include "support/repeats.h"
#include "support/test-record.h"

namespace {

struct tally {
  int grown = 0;      // extensions that changed something
  int unchanged = 0;  // extensions that changed nothing
  int foreseen = 0;   // those of them for which the bound said so
};

class GrowthBound : public ParameterTest {
 protected:
  CTestRecord record{""};
  Csat sat;
  CUnitText unit;

  std::string state() const {
    return describe(sat, record) + ' ' + std::to_string(sat.fwd_unit_cursor - sat.unit_begin) + ' ' +
           std::to_string(sat.bwd_unit_cursor - sat.unit_begin) + ' ' + edits_of(sat, record);
  }

  bool may_grow_to_the_right() const {
    return CGrowthBound(current_scoring())
        .may_grow<rightwards>({sat.pos_right, static_cast<int>(sat.fwd_unit_cursor - sat.unit_begin), sat.score}, unit,
                              record.end());
  }

  bool may_grow_to_the_left() const {
    return CGrowthBound(current_scoring())
        .may_grow<leftwards>({sat.pos_left, static_cast<int>(sat.bwd_unit_cursor - sat.unit_begin), sat.score}, unit,
                             record.begin());
  }

  template <typename Extend>
  void check_side(bool may_grow, tally& counts, Extend extend) {
    const std::string before = state();
    extend();
    if (state() != before) {
      EXPECT_TRUE(may_grow) << before << " became " << state() << ", " << extension_parameters();
      ++counts.grown;
      return;
    }
    ++counts.unchanged;
    counts.foreseen += may_grow ? 0 : 1;
  }

  // Extends the unit at p twice to each side: first from the unit alone, then from where that ended.
  void check_candidate(const char* p, int L, tally& counts) {
    sat.reset(p, p + L);
    unit.set(p, p + L);
    for (int round = 0; round < 2; ++round) {
      check_side(may_grow_to_the_right(), counts,
                 [this] { CSearchController::extend_imperfect_forward(sat, record.end()); });
      check_side(may_grow_to_the_left(), counts,
                 [this] { CSearchController::extend_imperfect_backward(sat, record.begin() - 1); });
    }
  }

  tally check_sequence(const std::string& symbols) {
    record.symbols.assign(symbols.data(), symbols.data() + symbols.size());
    tally counts;
    for (const char* p = record.begin(); p != record.end(); ++p) {
      for (int L = 1; L <= 6 && L <= record.end() - p; ++L) {
        if (std::string(p, p + L).find('N') == std::string::npos) check_candidate(p, L, counts);
      }
    }
    return counts;
  }
};

TEST_F(GrowthBound, NeverDeniesWhatAnExtensionDoes) {
  CRandomDna random(1);
  int grown = 0;
  for (int round = 0; round < 150; ++round) {
    set_random_extension_parameters(random, random.number(1, 6));
    const std::vector<std::string> alphabets{"AC", "AACGT", "ACGT", "ACN", "AAAACGTN"};
    const std::string alphabet = random.one_of(alphabets);
    grown += check_sequence(random.sequence(alphabet, random.number(1, 60))).grown;
  }
  EXPECT_GT(grown, 10000);
}

TEST_F(GrowthBound, ForeseesMostExtensionsThatChangeNothing) {
  CRandomDna random(2);
  const tally counts = check_sequence(random.sequence("ACGT", 2000));
  EXPECT_GT(counts.unchanged, 10000);
  EXPECT_GT(counts.foreseen, counts.unchanged * 9 / 10);
}

TEST_F(GrowthBound, LetsMatchesAndNeutralNsPass) {
  const auto may_grow_after_the_unit = [this](const char* symbols) {
    record.symbols.assign(symbols);
    sat.reset(record.begin(), record.begin() + 2);
    unit.set(record.begin(), record.begin() + 2);
    return may_grow_to_the_right();
  };
  EXPECT_TRUE(may_grow_after_the_unit("ACA"));
  EXPECT_TRUE(may_grow_after_the_unit("ACN"));
  EXPECT_FALSE(may_grow_after_the_unit("AC"));
  EXPECT_FALSE(may_grow_after_the_unit("ACGACACACACAC"));  // the edit would leave a score below -3
  global_mismatch_score = global_indel_score = -2;
  EXPECT_TRUE(may_grow_after_the_unit("ACGACACACACAC"));
  global_treat_Ns_as_missense = true;
  EXPECT_FALSE(may_grow_after_the_unit("ACN"));
}

}  // namespace
