// The filters of imperfect mode as the search asks for them, compared with the bound and the extension that they stand
// for.

#include "candidate-filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/candidate-sequences.h"
#include "support/default-parameters.h"
#include "support/filter-check.h"

namespace {

// The record in memory of its own size, so that a sanitizer notices reading beyond it.
class CAskedFilter {
 public:
  explicit CAskedFilter(const std::string& symbols)
      : exact(symbols.begin(), symbols.end()),
        filter(exact.data(), exact.size(), CSearchController::minScores, current_scoring(), global_max_unit_length,
               programs) {}

  const CPositionSet& candidates(unsigned L, const CCandidateFilter::asked_for& are_asked) {
    return filter.candidates(L, are_asked);
  }

  // The candidates of a unit length that both tests keep. The second is asked in batches of up to `batch`.
  CPositionSet keep(unsigned L, std::size_t batch) {
    const CPositionSet first = filter.candidates(L);
    EXPECT_EQ(first.end(), exact.size());
    CPositionSet kept(exact.size());
    std::vector<const char*> asked;
    for (std::size_t p = first.next(0); p != first.end(); p = first.next(p + 1)) {
      if (p + L < exact.size()) asked.push_back(exact.data() + p);
      if (asked.size() == batch) ask(asked, kept);
    }
    ask(asked, kept);
    return kept;
  }

 private:
  std::vector<char> exact;
  CAlignmentPrograms programs;
  CCandidateFilter filter;

  void ask(std::vector<const char*>& positions, CPositionSet& kept) {
    const std::uint64_t bits = filter.still_candidates(positions.data(), positions.size());
    for (std::size_t i = 0; i < positions.size(); ++i) {
      if ((bits >> i & 1) != 0) kept.add(static_cast<std::size_t>(positions[i] - exact.data()));
    }
    positions.clear();
  }
};

class CandidateFilter : public ParameterTest {
 protected:
  filter_counts counts;

  // Asks for all unit lengths of the settings up to that of the case, as a search does.
  void check(const filter_case& c, unsigned shortest, yardstick by, std::size_t batch) {
    const auto keep = [shortest, batch](const filter_case& any) {
      CAskedFilter filter(any.symbols);
      for (unsigned L = shortest; L < any.L && L < any.symbols.size(); ++L) filter.keep(L, batch);
      return any.L < any.symbols.size() ? filter.keep(any.L, batch) : CPositionSet(any.symbols.size());
    };
    // The filter for long units keeps some more beside the borders of its stretches.
    check_filter(c, by, keep, counts, on_targets::different);
  }
};

TEST_F(CandidateFilter, KeepsWhatCanBeAcceptedUnderManySettings) {
  CRandomDna random(1);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(300) && !HasFailure(); ++round) {
    const int L = random.number(1, random.one_of(std::vector<int>{10, 10, 30, 60}));
    const auto longest = static_cast<unsigned>(L + random.one_of(std::vector<int>{0, 0, 3, 30}));
    const candidate_settings settings = random_candidate_settings(random, longest);
    settings.put_in_force();
    const int T = CSearchController::minScores[L];
    check({settings, static_cast<unsigned>(L), sequences.make(sequences.length(), L, T)},
          static_cast<unsigned>(std::max(1, L - random.number(0, 3))), yardstick::bound_and_extension,
          static_cast<std::size_t>(random.number(1, 64)));
  }
  EXPECT_GT(counts.wanted, tried(10000U));
}

TEST_F(CandidateFilter, KeepsWhatCanBeAcceptedInRecordsOfEveryLength) {
  CRandomDna random(2);
  CCandidateSequences sequences(random);
  for (int length = 0; length <= 700 && !HasFailure(); ++length) {
    candidate_settings settings;
    settings.longest = 40;
    settings.put_in_force();
    const int L = random.number(1, random.coin() ? 10 : 40);
    check({settings, static_cast<unsigned>(L), sequences.make(length, L, std::max(6, L))}, static_cast<unsigned>(L),
          yardstick::bound, 64);
  }
  EXPECT_GT(counts.wanted, 1000U);
}

TEST_F(CandidateFilter, KeepsWhatTheBoundAsksForInRealSequence) {
  CRandomDna random(3);
  for (const char* const name : {"human_alpha_satellite.fa", "dictyostelium_at_rich.fa"}) {
    const std::string symbols = symbols_of_data_file(name);
    for (const int L : {1, 2, 3, 5, 8, 10, 14, 20, 22, 33, 60, 171}) {
      candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(L + 2));
      settings.mismatch_score = std::min(settings.mismatch_score, -4);
      settings.indel_score = std::min(settings.indel_score, -4);
      settings.put_in_force();
      check({settings, static_cast<unsigned>(L), symbols}, static_cast<unsigned>(L), yardstick::bound, 64);
      if (HasFailure()) return;
    }
  }
  EXPECT_GT(counts.wanted, 4000U * tested_targets().size());
}

TEST_F(CandidateFilter, KeepsEveryCandidateWhereNoScoreIsTooLow) {
  CRandomDna random(4);
  constexpr auto border = static_cast<int>(longest_short_record);
  for (const int length : {100, border, border + 1, 2 * border}) {
    const std::string symbols = random.sequence("ACGT", length);
    candidate_settings settings;
    settings.longest = 30;
    settings.min_score = 0;
    settings.min_score_b = 0;
    settings.put_in_force();
    CAskedFilter filter(symbols);
    for (unsigned L = 1; L <= 30; ++L) {
      const CPositionSet kept = filter.keep(L, 64);
      for (std::size_t p = 0; p + L < symbols.size(); ++p) ASSERT_TRUE(kept.has(p)) << L << ' ' << p;
    }
  }
}

// A block is tested whole, if one of its candidates is asked for.
TEST_F(CandidateFilter, LeavesUntestedOnlyBlocksOfWhichNoCandidateIsAskedFor) {
  CRandomDna random(6);
  const std::string symbols = symbols_of_data_file("human_alpha_satellite.fa");
  std::size_t untested = 0;
  std::size_t tested = 0;
  for (const unsigned L : {10U, 24U, 40U, 64U, 100U, 171U}) {
    candidate_settings settings;
    settings.longest = L;
    settings.put_in_force();
    CPositionSet asked(symbols.size());
    for (std::size_t p = 0; p < symbols.size(); ++p) {
      if (random.number(0, 200) == 0) asked.add(p);
    }
    CAskedFilter filter(symbols);
    const CPositionSet all = filter.candidates(L, CCandidateFilter::all_bits);
    const CPositionSet none =
        filter.candidates(L, [](unsigned, std::size_t, std::uint64_t) { return std::uint64_t{0}; });
    const CPositionSet some = filter.candidates(
        L, [&asked](unsigned, std::size_t word, std::uint64_t bits) { return bits & asked.word(word); });
    for (std::size_t p = 0; p < symbols.size(); ++p) {
      ASSERT_TRUE(none.has(p) || !some.has(p)) << L << ' ' << p;
      ASSERT_TRUE(some.has(p) || !all.has(p)) << L << ' ' << p;
      if (asked.has(p)) {
        ASSERT_EQ(some.has(p), all.has(p)) << L << ' ' << p;
      }
      untested += some.has(p) && !all.has(p) ? 1U : 0U;
      tested += none.has(p) && !some.has(p) ? 1U : 0U;
    }
  }
  EXPECT_GT(untested, 1000U);
  EXPECT_GT(tested, 1000U);
}

// Unit lengths are asked for in turn, as a search does; what is tested ahead serves only where it was asked for.
TEST_F(CandidateFilter, KeepsWhatTheBoundAsksForWhereLongerUnitsAreTestedAhead) {
  CRandomDna random(7);
  constexpr unsigned shortest = 200;
  candidate_settings settings;
  settings.longest = 204;
  settings.min_score_b = 0.75F;
  settings.put_in_force();
  std::string repeats;
  for (int plants = 0; plants < 5; ++plants) {
    const std::string unit = random.sequence("ACGT", random.number(shortest, static_cast<int>(settings.longest)));
    std::string copy = unit;
    for (int edits = random.number(0, 20); edits > 0; --edits) {
      copy[static_cast<std::size_t>(random.number(0, static_cast<int>(copy.size()) - 1))] = 'A';
    }
    repeats += unit + copy + random.sequence("ACGT", 300);
  }
  const std::size_t front = 40000;
  const std::string symbols = random.sequence("ACGT", static_cast<int>(front)) + repeats;
  // What reaches a score there reaches it among other symbols.
  std::vector<CPositionSet> must_be;
  for (unsigned L = shortest; L <= settings.longest; ++L) {
    must_be.push_back(must_be_kept({settings, L, repeats}, yardstick::bound));
  }
  std::size_t wanted = 0;
  for (const bool are_all_asked : {true, false}) {
    CAskedFilter filter(symbols);
    std::size_t kept_in_turn = 0;
    std::size_t kept_alone = 0;
    for (unsigned L = shortest; L <= settings.longest; ++L) {
      // Of longer units something else is asked for later.
      const CPositionSet kept = filter.candidates(L, [&](unsigned its_L, std::size_t word, std::uint64_t bits) {
        return are_all_asked || its_L == L || (word + L) % 3 != 0 ? bits : 0;
      });
      CAskedFilter alone(symbols);
      const auto are_asked = [L](unsigned its_L, std::size_t, std::uint64_t bits) { return its_L == L ? bits : 0; };
      kept_in_turn += count_of(kept);
      kept_alone += count_of(alone.candidates(L, are_asked));
      const CPositionSet& all = must_be[L - shortest];
      for (std::size_t p = all.next(0); p != all.end(); p = all.next(p + 1)) {
        ++wanted;
        ASSERT_TRUE(kept.has(front + p)) << L << ' ' << p;
      }
    }
    EXPECT_GT(kept_alone, 0U);
    EXPECT_LE(kept_in_turn, kept_alone + kept_alone / 10);
  }
  EXPECT_GT(wanted, 50U);
}

TEST_F(CandidateFilter, DropsNearlyAllOfARandomSequence) {
  CRandomDna random(5);
  candidate_settings settings;
  settings.longest = 40;
  settings.put_in_force();
  constexpr auto border = static_cast<int>(longest_short_record);
  for (const int length : {border, 5000}) {
    for (const unsigned L : {1U, 2U, 5U, 10U, 14U, 20U, 30U, 40U}) {
      counts = {};
      check({settings, L, random.sequence("ACGT", length)}, L, yardstick::bound, 64);
      // Candidates near the ends of long records pass the second test.
      EXPECT_LT(counts.share_of_unwanted_kept(), length == border ? 0.01 : 0.02) << length << ' ' << L;
    }
  }
}

}  // namespace
