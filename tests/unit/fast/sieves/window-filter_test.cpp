// The chained window edit distances: what they keep, compared with the bound itself.

#include "window-filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/candidate-sequences.h"
#include "support/default-parameters.h"
#include "support/filter-check.h"

namespace {

CWindowFilter::settings window_settings(const candidate_settings& s, unsigned shortest) {
  return {-s.mismatch_score, -s.indel_score, s.prefer_longer, Ns_are_neutral(), shortest, s.longest, [](unsigned L) {
            return CSearchController::minScores[L];
          }};
}

// How often a unit length was given up, which keeps all.
struct window_counts {
  filter_counts candidates;
  std::size_t tests = 0;
  std::size_t given_up = 0;
};

bool applies(const candidate_settings& s, unsigned shortest) {
  for (unsigned L = shortest; L <= s.longest; ++L) {
    if (!CWindowFilter::applies(L, -s.mismatch_score, -s.indel_score, CSearchController::minScores[L])) return false;
  }
  return true;
}

CPositionSet keep(const filter_case& c, unsigned shortest, window_counts& counts) {
  CWindowFilter filter;
  filter.run(c.symbols.data(), c.symbols.size(), window_settings(c.settings, shortest));
  ++counts.tests;
  CPositionSet kept(c.symbols.size());
  if (filter.has(c.L)) {
    filter.place(c.L, kept);
  } else {
    ++counts.given_up;
    if (!c.symbols.empty()) kept.fill();
  }
  return kept;
}

class WindowFilter : public ParameterTest {
 protected:
  window_counts counts;

  void check(const filter_case& c, unsigned shortest) {
    ASSERT_TRUE(applies(c.settings, shortest));
    // Kept sets differ beside the borders of stretches, of which there are as many as lanes.
    check_filter(
        c, yardstick::bound, [&](const filter_case& any) { return keep(any, shortest, counts); }, counts.candidates,
        on_targets::different);
  }
};

candidate_settings fitting_settings(CRandomDna& random, int longest) {
  candidate_settings settings;
  settings.longest = static_cast<unsigned>(longest);
  settings.mismatch_score = random.one_of(std::vector<int>{-5, -5, -5, -6, -8});
  settings.indel_score = random.one_of(std::vector<int>{-5, -5, -5, -6, -8});
  settings.prefer_longer = random.number(0, 1);
  settings.Ns_are_missense = random.number(0, 3) == 0;
  settings.min_score = random.number(6, 40);
  settings.min_score_b = random.one_of(std::vector<float>{0.25F, 0.5F, 1.0F, 1.0F, 1.0F, 1.5F});
  settings.put_in_force();
  return settings;
}

// A copy with edits that cost up to as much as a path may lose in it, and more.
std::string worn_copy(CRandomDna& random, const std::string& unit, int penalty) {
  const int budget = static_cast<int>(unit.size()) * 2 / (penalty + 1);
  const int edits = budget * random.number(0, 110) / 100;
  const int kind = random.number(0, 3);
  std::string copy = unit;
  for (int i = 0; i < edits && !copy.empty(); ++i) {
    const auto at = static_cast<std::size_t>(random.number(0, static_cast<int>(copy.size()) - 1));
    switch (kind == 3 ? random.number(0, 2) : kind) {
      case 0:
        copy[at] = copy[at] == 'A' ? 'C' : 'A';
        break;
      case 1:
        copy.insert(at, random.sequence("ACGT", random.number(0, 9) == 0 ? 12 : 1));
        break;
      default:
        copy.erase(at, random.number(0, 9) == 0 ? 12 : 1);
    }
  }
  return copy;
}

// Random sequence with a repeat in it whose copies are worn, so that most of the sequence is not kept.
std::string with_worn_repeat(CRandomDna& random, int L, int penalty, int around) {
  const std::string unit = random.sequence("ACGT", L);
  std::string side;
  for (int worn = random.number(0, 3); worn > 0; --worn) side += worn_copy(random, unit, penalty);
  if (random.coin()) side += unit;
  side += unit.substr(0, static_cast<std::size_t>(random.number(0, L)));
  std::string symbols = unit + side;
  if (random.coin()) std::reverse(symbols.begin(), symbols.end());
  return random.sequence("ACGT", random.number(0, around)) + symbols +
         random.sequence("ACGT", random.number(0, around));
}

TEST_F(WindowFilter, KeepsWhatTheBoundAsksForBesideWornCopies) {
  CRandomDna random(1);
  for (int round = 0; round < 8 && !HasFailure(); ++round) {
    const int L = random.number(128, random.coin() ? 160 : 330);
    const int longest = L + (random.coin() ? 0 : random.number(0, 200));
    const candidate_settings settings = fitting_settings(random, longest);
    const int penalty = -std::max(settings.mismatch_score, settings.indel_score);
    const auto shortest = static_cast<unsigned>(std::max(128, L - random.number(0, 40)));
    check({settings, static_cast<unsigned>(L), with_worn_repeat(random, L, penalty, 700)}, shortest);
  }
  EXPECT_GT(counts.candidates.wanted, 1000U * tested_targets().size());
  EXPECT_LT(counts.given_up, counts.tests / 2);
}

TEST_F(WindowFilter, KeepsWhatTheBoundAsksForAroundNsAndRareSymbols) {
  CRandomDna random(2);
  CCandidateSequences sequences(random);
  for (int round = 0; round < 15 && !HasFailure(); ++round) {
    const int L = random.number(128, 200);
    const candidate_settings settings = fitting_settings(random, L);
    std::string symbols = with_worn_repeat(random, L, 5, 700);
    sequences.add_Ns(symbols);
    for (int rare = random.number(0, 4); rare > 0; --rare) {
      symbols[static_cast<std::size_t>(random.number(0, static_cast<int>(symbols.size()) - 1))] = 'R';
    }
    check({settings, static_cast<unsigned>(L), symbols}, 128);
  }
  EXPECT_GT(counts.candidates.wanted, 300U);
  EXPECT_LT(counts.given_up, counts.tests / 2);
}

// Satellites and sequence of few kinds of symbols, between random sequence.
TEST_F(WindowFilter, KeepsWhatTheBoundAsksForInRealSequence) {
  CRandomDna random(3);
  for (const char* const name : {"human_alpha_satellite.fa", "dictyostelium_at_rich.fa"}) {
    const std::string real = symbols_of_data_file(name);
    for (const int L : {128, 170, 171, 172, 340}) {
      candidate_settings settings = fitting_settings(random, L + random.number(0, 5));
      settings.min_score_b = 0.25F;
      settings.put_in_force();
      const std::string piece = real.substr(0, static_cast<std::size_t>(random.number(400, 1200)));
      const std::string symbols = random.sequence("ACGT", 1500) + piece + random.sequence("ACGT", 1500);
      check({settings, static_cast<unsigned>(L), symbols}, 128);
      if (HasFailure()) return;
    }
  }
  EXPECT_GT(counts.candidates.wanted, 300U);
  EXPECT_LT(counts.given_up, counts.tests);
}

TEST_F(WindowFilter, KeepsWhatTheBoundAsksForInRecordsOfEveryLength) {
  CRandomDna random(4);
  for (int length = 0; length <= 900 && !HasFailure(); length += 23) {
    candidate_settings settings;
    settings.longest = 140;
    settings.put_in_force();
    const std::string unit = random.sequence("ACGT", 128 + length % 13);
    std::string symbols;
    while (static_cast<int>(symbols.size()) < length) symbols += worn_copy(random, unit, 12);
    symbols.resize(static_cast<std::size_t>(length));
    check({settings, static_cast<unsigned>(unit.size()), symbols}, 128);
  }
  EXPECT_GT(counts.candidates.wanted, 300U);
}

TEST_F(WindowFilter, DropsNearlyAllOfARandomSequence) {
  CRandomDna random(5);
  const std::string symbols = random.sequence("ACGT", 40000);
  candidate_settings settings;
  settings.longest = 280;
  settings.put_in_force();
  CWindowFilter filter;
  filter.run(symbols.data(), symbols.size(), window_settings(settings, 224));
  for (unsigned L = 224; L <= 280; ++L) ASSERT_TRUE(filter.has(L)) << L;
  EXPECT_EQ(filter.longest_with_many(), 0U);
  EXPECT_FALSE(filter.has(223));
  EXPECT_FALSE(filter.has(281));
}

// Where all candidates of a length may be accepted, nothing is known of it.
TEST_F(WindowFilter, GivesUpSatellites) {
  CRandomDna random(6);
  const std::string unit = random.sequence("ACGT", 171);
  std::string symbols;
  while (symbols.size() < 20000) symbols += unit;
  candidate_settings settings;
  settings.longest = 180;
  settings.put_in_force();
  CWindowFilter filter;
  filter.run(symbols.data(), symbols.size(), window_settings(settings, 150));
  EXPECT_FALSE(filter.has(171));
  EXPECT_GE(filter.longest_with_many(), 171U);
}

TEST_F(WindowFilter, GivesUpScoresThatDoNotFit) {
  CRandomDna random(8);
  const std::string symbols = random.sequence("ACGT", 40000);
  candidate_settings settings;
  settings.longest = 200;
  settings.put_in_force();
  CWindowFilter::settings for_windows = window_settings(settings, 190);
  CWindowFilter filter;
  filter.run(symbols.data(), symbols.size(), for_windows);
  EXPECT_TRUE(filter.has(190));
  EXPECT_TRUE(filter.has(200));
  for_windows.prefer_longer = 16000;
  filter.run(symbols.data(), symbols.size(), for_windows);
  EXPECT_FALSE(filter.has(190));
  EXPECT_FALSE(filter.has(200));
  EXPECT_EQ(filter.longest_with_many(), 200U);
}

TEST_F(WindowFilter, AppliesToLongUnitsAndPenaltiesOfFiveAndMore) {
  EXPECT_TRUE(CWindowFilter::applies(128, 5, 5, 128));
  EXPECT_FALSE(CWindowFilter::applies(127, 5, 5, 127));
  EXPECT_TRUE(CWindowFilter::applies(4000, 5, 5, 4000));
  EXPECT_FALSE(CWindowFilter::applies(4001, 5, 5, 4001));
  EXPECT_FALSE(CWindowFilter::applies(128, 4, 5, 128));
  EXPECT_FALSE(CWindowFilter::applies(128, 5, 4, 128));
  EXPECT_FALSE(CWindowFilter::applies(128, 5, 5, 3));
  EXPECT_FALSE(CWindowFilter::pays({128, 5, 5, 128, 128}, 2000));
  EXPECT_TRUE(CWindowFilter::pays({128, 5, 5, 128, 128}, 1000000));
}

// What is kept of a stretch is what is kept of it in the record, but for the borders of lanes.
TEST_F(WindowFilter, ReadsBesideAStretchOfARecord) {
  CRandomDna random(7);
  for (int round = 0; round < 10 && !HasFailure(); ++round) {
    const int L = random.number(128, 180);
    const candidate_settings settings = fitting_settings(random, L);
    const std::string symbols = with_worn_repeat(random, L, 5, 300);
    const filter_case whole{settings, static_cast<unsigned>(L), symbols};
    const CPositionSet wanted = must_be_kept(whole, yardstick::bound);
    const auto begin = static_cast<std::size_t>(random.number(0, static_cast<int>(symbols.size()) / 2));
    const std::size_t size = symbols.size() - begin - static_cast<std::size_t>(random.number(0, 200)) % symbols.size();
    if (size > symbols.size()) continue;
    CWindowFilter filter;
    filter.run(symbols.data() + begin, size, window_settings(settings, 128),
               {symbols.data(), symbols.data() + symbols.size()});
    ASSERT_TRUE(filter.has(whole.L));
    CPositionSet kept(size);
    filter.place(whole.L, kept);
    for (std::size_t p = 0; p + whole.L <= size; ++p) {
      if (!wanted.has(begin + p)) continue;
      ++counts.candidates.wanted;
      EXPECT_TRUE(kept.has(p)) << p << " of " << size << " from " << begin << ", " << settings.text();
    }
  }
  EXPECT_GT(counts.candidates.wanted, 300U);
}

}  // namespace
