// The self-alignment potential: what it keeps, compared with the bound and the extension themselves.

#include "potential-filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/candidate-sequences.h"
#include "support/default-parameters.h"
#include "support/filter-check.h"

namespace {

CPotentialFilter::settings potential_settings(const candidate_settings& s, unsigned shortest, unsigned longest) {
  return {-s.mismatch_score, -s.indel_score, s.prefer_longer, Ns_are_neutral(), shortest, longest, [](unsigned L) {
            return CSearchController::minScores[L];
          }};
}

// Whether it does to all unit lengths from the shortest to the longest of the settings.
bool applies(const candidate_settings& s, unsigned shortest) {
  for (unsigned L = shortest; L <= s.longest; ++L) {
    if (!CPotentialFilter::applies(-s.mismatch_score, -s.indel_score, CSearchController::minScores[L])) return false;
  }
  return true;
}

// The filter runs for the unit lengths `shortest` to the longest of the settings, as far as the record is longer.
CPositionSet keep(const filter_case& c, unsigned shortest) {
  CPositionSet kept(c.symbols.size());
  const auto longest = static_cast<unsigned>(std::min<std::size_t>(c.settings.longest, c.symbols.size()));
  if (c.L > longest) return kept;
  CPotentialFilter filter;
  filter.run(c.symbols.data(), c.symbols.size(), potential_settings(c.settings, shortest, longest));
  if (filter.has(c.L)) {
    filter.place(c.L, kept);
  } else {
    filter.run(c.symbols.data(), c.symbols.size(), potential_settings(c.settings, c.L, longest));
    EXPECT_TRUE(filter.has(c.L));
    filter.place(c.L, kept);
  }
  return kept;
}

class PotentialFilter : public ParameterTest {
 protected:
  filter_counts counts;  // of cases that the filter applies to

  void check(const filter_case& c, unsigned shortest, yardstick by) {
    if (!applies(c.settings, shortest)) return;
    // Kept sets differ beside the borders of stretches, of which there are as many as lanes.
    check_filter(
        c, by, [shortest](const filter_case& any) { return keep(any, shortest); }, counts, on_targets::different);
  }
};

// The penalties that the filter is for.
candidate_settings fitting_settings(CRandomDna& random, unsigned longest) {
  const std::vector<int> scores{-3, -3, -4, -5, -5, -6, -8, -12};
  candidate_settings settings = random_candidate_settings(random, longest);
  settings.mismatch_score = random.one_of(scores);
  settings.indel_score = random.one_of(scores);
  return settings;
}

// A copy of the unit that costs a path about as much as it may lose, in edits of one kind or of all.
std::string worn_copy(CRandomDna& random, const std::string& unit, const candidate_settings& settings) {
  const int budget = static_cast<int>(unit.size()) * 2 / (1 - std::max(settings.mismatch_score, settings.indel_score));
  const int edits = std::max(0, budget * random.number(40, 100) / 100);
  const int kind = random.number(0, 3);
  std::string copy = unit;
  for (int i = 0; i < edits && !copy.empty(); ++i) {
    const auto at = static_cast<std::size_t>(random.number(0, static_cast<int>(copy.size()) - 1));
    switch (kind == 3 ? random.number(0, 2) : kind) {
      case 0:
        copy[at] = copy[at] == 'A' ? 'C' : 'A';
        break;
      case 1:
        copy.insert(at, random.sequence("ACGT", 1));
        break;
      default:
        copy.erase(at, 1);
    }
  }
  return copy;
}

TEST_F(PotentialFilter, KeepsWhatCanBeAcceptedUnderManySettings) {
  CRandomDna random(1);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(200) && !HasFailure(); ++round) {
    const int shortest = random.number(5, 40);
    const int longest = std::min(shortest + random.number(0, 60), 120);
    const int L = random.number(shortest, std::min(longest, 60));
    const candidate_settings settings = fitting_settings(random, static_cast<unsigned>(longest));
    settings.put_in_force();
    const int T = CSearchController::minScores[L];
    check({settings, static_cast<unsigned>(L), sequences.make(sequences.length(), L, T)},
          static_cast<unsigned>(shortest), yardstick::bound_and_extension);
  }
  EXPECT_GT(counts.candidates, tried(50000U));
  EXPECT_GT(counts.wanted, tried(2500U));
}

// What the thresholds allow for, used up.
TEST_F(PotentialFilter, KeepsCandidatesWhoseFirstCopyIsAsBadAsItMayBe) {
  CRandomDna random(6);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(200) && !HasFailure(); ++round) {
    const int L = random.number(30, random.coin() ? 60 : 150);
    candidate_settings settings;
    settings.longest = static_cast<unsigned>(L);
    settings.mismatch_score = random.one_of(std::vector<int>{-3, -5, -5, -7, -9});
    settings.indel_score = random.number(-12, -3);
    settings.prefer_longer = random.number(0, 1);
    settings.min_score_b = random.one_of(std::vector<float>{0.5F, 1.0F});
    settings.put_in_force();
    const std::string symbols = random.sequence("ACGT", 20) + sequences.with_decayed_copy(L, -settings.mismatch_score) +
                                random.sequence("ACGT", 20);
    check({settings, settings.longest, symbols}, settings.longest, yardstick::bound);
  }
  EXPECT_GT(counts.wanted, tried(3000U));
}

// Repeats of units as long as those of satellites.
TEST_F(PotentialFilter, KeepsWhatTheBoundAsksForInRealSequence) {
  CRandomDna random(2);
  for (const char* const name : {"human_alpha_satellite.fa", "dictyostelium_at_rich.fa"}) {
    const std::string whole = symbols_of_data_file(name);
    const std::string symbols = whole.substr(0, tried(whole.size()));
    for (const int L : {12, 21, 33, 60, 170, 171}) {
      candidate_settings settings = fitting_settings(random, static_cast<unsigned>(L + random.number(0, 5)));
      settings.min_score = random.number(6, 30);
      settings.put_in_force();
      check({settings, static_cast<unsigned>(L), symbols}, static_cast<unsigned>(L - random.number(0, 5)),
            yardstick::bound);
      if (HasFailure()) return;
    }
  }
  EXPECT_GT(counts.wanted, tried(1000U));
}

TEST_F(PotentialFilter, KeepsWhatCanBeAcceptedInRecordsOfEveryLength) {
  CRandomDna random(3);
  CCandidateSequences sequences(random);
  // In both steps every remainder of the number of lanes comes up.
  const int step = tried(4) == 4 ? 3 : 13;
  for (int length = 0; length <= 700 && !HasFailure(); length += step) {
    candidate_settings settings;
    settings.longest = 40;
    settings.put_in_force();
    const int L = random.number(10, 40);
    check({settings, static_cast<unsigned>(L), sequences.make(length, L, L)}, 10, yardstick::bound);
  }
  EXPECT_GT(counts.wanted, tried(300U));
}

// A lane works on a stretch of some fifty symbols here.
TEST_F(PotentialFilter, KeepsWhatCanBeAcceptedAroundNsAtEveryOffset) {
  CRandomDna random(4);
  CCandidateSequences sequences(random);
  for (std::size_t offset = 0; offset <= 110 && !HasFailure(); offset += 3) {
    candidate_settings settings;
    settings.longest = 30;
    settings.Ns_are_missense = random.number(0, 2) == 0;
    settings.put_in_force();
    const int L = random.number(10, 30);
    std::string symbols;
    while (symbols.size() < 3200) symbols += sequences.array_of(L);
    symbols.resize(3200);
    CCandidateSequences::put_Ns(symbols, offset, random.number(1, 4));
    CCandidateSequences::put_Ns(symbols, 1600 + offset, random.number(1, 4));
    CCandidateSequences::put_Ns(symbols, symbols.size() - offset - 4, random.number(1, 4));
    check({settings, static_cast<unsigned>(L), symbols}, 10, yardstick::bound);
  }
  EXPECT_GT(counts.wanted, 3000U);
}

// What is good lies in a later copy, which paths reach with little left, and as far aside as they can pay for.
TEST_F(PotentialFilter, KeepsCandidatesThatGainInLaterCopies) {
  CRandomDna random(7);
  for (int round = 0; round < tried(150) && !HasFailure(); ++round) {
    const int L = random.number(16, random.coin() ? 40 : 100);
    candidate_settings settings;
    settings.longest = static_cast<unsigned>(L + random.number(0, 40));
    settings.mismatch_score = random.number(-6, -3);
    settings.indel_score = random.number(-6, -3);
    settings.prefer_longer = random.number(0, 1);
    settings.min_score = random.number(6, 30);
    settings.min_score_b = random.one_of(std::vector<float>{0.0F, 0.5F, 1.0F});
    settings.put_in_force();
    const std::string unit = random.sequence("ACGT", L);
    std::string side;
    for (int worn = random.number(1, 3); worn > 0; --worn) side += worn_copy(random, unit, settings);
    side += unit + unit + unit.substr(0, static_cast<std::size_t>(random.number(0, L)));
    std::string symbols = unit + side;
    if (random.coin()) std::reverse(symbols.begin(), symbols.end());
    symbols = random.sequence("ACGT", random.number(0, 30)) + symbols + random.sequence("ACGT", random.number(0, 30));
    check({settings, static_cast<unsigned>(L), symbols}, static_cast<unsigned>(L - random.number(0, 3)),
          yardstick::bound);
  }
  EXPECT_GT(counts.wanted, tried(3000U));
}

// Values of two bytes, several blocks of distances, and records shorter than these.
TEST_F(PotentialFilter, KeepsLongUnits) {
  CRandomDna random(8);
  for (int round = 0; round < tried(8) && !HasFailure(); ++round) {
    const int L = random.number(100, 300);
    candidate_settings settings;
    settings.longest = static_cast<unsigned>(L + random.number(0, 200));
    settings.mismatch_score = settings.indel_score = random.number(-5, -3);
    settings.put_in_force();
    const std::string unit = random.sequence("ACGT", L);
    std::string symbols = random.sequence("ACGT", random.number(0, 100)) + unit;
    for (int copies = random.number(1, 3); copies > 0; --copies) symbols += worn_copy(random, unit, settings) + unit;
    symbols += random.sequence("ACGT", random.number(0, 100));
    check({settings, static_cast<unsigned>(L), symbols}, static_cast<unsigned>(L - random.number(0, 20)),
          yardstick::bound);
  }
  EXPECT_GT(counts.wanted, tried(200U));
}

TEST_F(PotentialFilter, DropsMostOfARandomSequence) {
  CRandomDna random(5);
  const std::string symbols = random.sequence("ACGT", tried(20000));
  for (const int score : {-5, -3}) {
    candidate_settings settings;
    settings.longest = 60;
    settings.mismatch_score = settings.indel_score = score;
    settings.put_in_force();
    for (const unsigned L : {25U, 40U, 60U}) {
      counts = {};
      check({settings, L, symbols}, 20, yardstick::bound);
      EXPECT_LT(counts.share_of_unwanted_kept(), 0.1) << L;
    }
  }
}

TEST_F(PotentialFilter, AppliesToPenaltiesOfThreeAndMore) {
  candidate_settings settings;
  settings.longest = 30;
  settings.mismatch_score = settings.indel_score = -3;
  settings.put_in_force();
  EXPECT_TRUE(applies(settings, 20));
  settings.mismatch_score = -2;
  EXPECT_FALSE(applies(settings, 20));
  settings.mismatch_score = -5;
  settings.indel_score = -2;
  EXPECT_FALSE(applies(settings, 20));
}

// Lengths whose values fit a byte are not tested together with others.
TEST_F(PotentialFilter, PutsAlikeLengthsTogether) {
  candidate_settings settings;
  settings.longest = 500;
  settings.put_in_force();
  const unsigned longest = CPotentialFilter::longest_alike(potential_settings(settings, 21, 500));
  EXPECT_GT(longest, 90U);
  EXPECT_LT(longest, 130U);
  EXPECT_EQ(CPotentialFilter::longest_alike(potential_settings(settings, longest + 1, 500)), 500U);
  EXPECT_EQ(CPotentialFilter::longest_alike(potential_settings(settings, 21, 30)), 30U);
}

TEST_F(PotentialFilter, DoesNotApplyWhereNoScoreIsTooLow) {
  candidate_settings settings;
  settings.longest = 30;
  settings.min_score = 0;
  settings.min_score_b = 0;
  settings.put_in_force();
  EXPECT_FALSE(applies(settings, 20));
}

}  // namespace
