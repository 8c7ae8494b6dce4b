// The alignment bound in lanes of one byte or two: what it keeps, compared with the bound and the extension themselves.

#include "batch-bound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/candidate-sequences.h"
#include "support/default-parameters.h"
#include "support/filter-check.h"

namespace {

// The symbols with as many other bytes around them as may be read, and not one more.
class CPaddedSymbols {
 public:
  CPaddedSymbols(const std::string& symbols, unsigned L)
      : front(CBatchBound::reach(L)), bytes(front + symbols.size() + L + front + CBatchBound::most_candidates) {
    std::copy(symbols.begin(), symbols.end(), bytes.begin() + static_cast<std::ptrdiff_t>(front));
  }
  const char* begin() const { return bytes.data() + front; }

 private:
  std::size_t front;
  std::vector<char> bytes;
};

// The symbols in memory of their own size, so that a sanitizer notices reading beyond them.
class CExactSymbols {
 public:
  explicit CExactSymbols(const std::string& symbols) : bytes(symbols.begin(), symbols.end()) {}
  symbol_range range() const { return {bytes.data(), bytes.data() + bytes.size()}; }

 private:
  std::vector<char> bytes;
};

CPositionSet keep_of_all(const filter_case& c) {
  const CPaddedSymbols padded(c.symbols, c.L);
  CBatchBound batch_bound;
  CPositionSet kept(c.symbols.size());
  for (std::size_t first = 0; first < c.symbols.size(); first += CBatchBound::most_candidates) {
    const std::size_t count = std::min(CBatchBound::most_candidates, c.symbols.size() - first);
    const std::uint64_t bits =
        batch_bound.may_reach_next(c.settings.bound(c.L), padded.begin() + first, count, Ns_are_neutral());
    EXPECT_EQ(count == 64 ? 0 : bits >> count, 0U) << "bits without a candidate are set";
    kept.add_64(first, bits);
  }
  return kept;
}

// Asks for the candidates alone, so that the batches are scattered; the last one is not full.
CPositionSet keep_of_batches(const filter_case& c, std::size_t batch) {
  const CExactSymbols symbols(c.symbols);
  CBatchBound batch_bound;
  const std::vector<std::size_t> positions = candidate_positions(c.symbols, c.L);
  CPositionSet kept(c.symbols.size());
  for (std::size_t first = 0; first < positions.size(); first += batch) {
    std::vector<const char*> asked;
    for (std::size_t i = first; i < std::min(first + batch, positions.size()); ++i) {
      asked.push_back(symbols.range().begin + positions[i]);
    }
    const std::uint64_t bits =
        batch_bound.may_reach(c.settings.bound(c.L), symbols.range(), asked.data(), asked.size(), Ns_are_neutral());
    EXPECT_EQ(asked.size() == 64 ? 0 : bits >> asked.size(), 0U) << "bits without a candidate are set";
    for (std::size_t i = 0; i < asked.size(); ++i) {
      if ((bits >> i & 1) != 0) kept.add(positions[first + i]);
    }
  }
  return kept;
}

// Clusters side by side; the last batch is not full.
CPositionSet keep_of_clusters(const filter_case& c, std::size_t size) {
  const CExactSymbols symbols(c.symbols);
  CBatchBound batch_bound;
  CPositionSet kept(c.symbols.size());
  for (std::size_t first = 0; first < c.symbols.size(); first += size * CBatchBound::most_candidates) {
    std::vector<const char*> asked;
    for (std::size_t at = first; at < c.symbols.size() && asked.size() < CBatchBound::most_candidates; at += size) {
      asked.push_back(symbols.range().begin + at);
    }
    const std::uint64_t bits = batch_bound.clusters_may_reach(
        c.settings.bound(c.L), static_cast<int>(size), symbols.range(), asked.data(), asked.size(), Ns_are_neutral());
    for (std::size_t i = 0; i < asked.size() * size; ++i) {
      if ((bits >> i / size & 1) != 0 && first + i < c.symbols.size()) kept.add(first + i);
    }
  }
  return kept;
}

class BatchBound : public ParameterTest {
 protected:
  filter_counts counts;  // of cases that the bound applies to

  void check(const filter_case& c, yardstick by, std::size_t batch) {
    if (!CBatchBound::applies(c.settings.bound(c.L))) return;
    check_filter(c, by, keep_of_all, counts);
    check_filter(
        c, by, [batch](const filter_case& any) { return keep_of_batches(any, batch); }, counts);
  }

  // When the diagonals of a cluster become one depends on the other clusters of the vector.
  void check_clusters(const filter_case& c) {
    for (const std::size_t size : {std::size_t{2}, std::size_t{8}, std::size_t{64}}) {
      if (size > c.L) continue;
      const auto keep = [size](const filter_case& any) { return keep_of_clusters(any, size); };
      check_filter(c, yardstick::bound, keep, counts, on_targets::different);
    }
  }
};

TEST_F(BatchBound, KeepsWhatCanBeAcceptedUnderManySettings) {
  CRandomDna random(1);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(200) && !HasFailure(); ++round) {
    const int L = random.number(1, random.one_of(std::vector<int>{10, 10, 30, 60, 120}));
    const candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(L));
    settings.put_in_force();
    const int T = CSearchController::minScores[L];
    const int length = L <= 30 ? sequences.length() : random.number(0, 700);
    const auto batch = static_cast<std::size_t>(random.number(1, 64));
    check({settings, static_cast<unsigned>(L), sequences.make(length, L, T)}, yardstick::bound_and_extension, batch);
  }
  EXPECT_GT(counts.candidates, tried(100000U));
  EXPECT_GT(counts.wanted, tried(10000U));
}

// Every diagonal is left and the rows are used up.
TEST_F(BatchBound, KeepsWhatTheBoundAsksForWhenEditsAreCheap) {
  CRandomDna random(2);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(60) && !HasFailure(); ++round) {
    const int L = random.number(20, 120);
    candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(L));
    settings.mismatch_score = random.number(-12, -2);
    settings.indel_score = random.number(-3, -2);
    settings.min_score = random.number(30, 120);
    settings.put_in_force();
    check({settings, static_cast<unsigned>(L), sequences.make(random.number(100, 400), L, 60)}, yardstick::bound, 64);
  }
  EXPECT_GT(counts.wanted, tried(1000U));
}

TEST_F(BatchBound, KeepsWhatCanBeAcceptedInRecordsOfEveryLength) {
  CRandomDna random(3);
  CCandidateSequences sequences(random);
  for (int length = 0; length <= 700 && !HasFailure(); ++length) {
    candidate_settings settings;
    settings.put_in_force();
    const int L = random.number(1, 10);
    check({settings, static_cast<unsigned>(L), sequences.make(length, L, 6)}, yardstick::bound_and_extension,
          static_cast<std::size_t>(random.number(1, 64)));
  }
  EXPECT_GT(counts.wanted, 1000U);
}

TEST_F(BatchBound, KeepsWhatCanBeAcceptedAroundNsAtEveryOffset) {
  CRandomDna random(4);
  CCandidateSequences sequences(random);
  for (std::size_t offset = 0; offset <= 130 && !HasFailure(); ++offset) {
    candidate_settings settings;
    settings.Ns_are_missense = random.number(0, 2) == 0;
    settings.longest = 12;
    settings.put_in_force();
    const int L = random.number(1, 12);
    std::string symbols;
    while (symbols.size() < 300) symbols += sequences.array_of(L);
    symbols.resize(300);
    CCandidateSequences::put_Ns(symbols, offset, random.number(1, 4));
    CCandidateSequences::put_Ns(symbols, symbols.size() - offset - 4, random.number(1, 4));
    check({settings, static_cast<unsigned>(L), symbols}, yardstick::bound_and_extension, 64);
  }
  EXPECT_GT(counts.wanted, 5000U);
}

// Nothing is rounded, so without N's what is kept beyond the bound is only what was left undecided.
TEST_F(BatchBound, DropsNearlyAllThatTheBoundRefuses) {
  CRandomDna random(5);
  candidate_settings settings;
  settings.longest = 20;
  settings.put_in_force();
  for (unsigned L = 1; L <= 20; ++L) {
    counts = {};
    check({settings, L, random.sequence("ACGT", 3000)}, yardstick::bound, 64);
    EXPECT_LT(counts.share_of_unwanted_kept(), 0.001) << L;
  }
}

TEST_F(BatchBound, KeepsWhatTheBoundAsksForInWideLanes) {
  CRandomDna random(6);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(25) && !HasFailure(); ++round) {
    const int L = random.one_of(std::vector<int>{60, 100, 119, 120, 121, 150, 171});
    candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(L));
    settings.mismatch_score = std::min(settings.mismatch_score, -4);
    settings.indel_score = random.number(-6, -3);
    settings.min_score = random.one_of(std::vector<int>{40, L, 248 - L, 249 - L, 250 - L, 251 - L, 300});
    settings.min_score_b = 0;
    settings.put_in_force();
    const std::string symbols = random.coin() ? sequences.make(random.number(100, 700), L, L)
                                              : symbols_of_data_file("human_alpha_satellite.fa").substr(0, 1000);
    check({settings, static_cast<unsigned>(L), symbols}, yardstick::bound, 64);
  }
  EXPECT_GT(counts.wanted, tried(1000U));
}

TEST_F(BatchBound, KeepsClustersWithACandidateThatTheBoundAsksFor) {
  CRandomDna random(7);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(30) && !HasFailure(); ++round) {
    const int L = random.one_of(std::vector<int>{8, 9, 17, 31, 33, 63, 64, 65, 70, 90, 119, 120, 127, 128, 150, 171});
    candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(L));
    settings.mismatch_score = std::min(settings.mismatch_score, -3);
    settings.indel_score = random.number(-6, -3);
    settings.min_score = random.one_of(std::vector<int>{20, 40, L / 2, L});
    settings.min_score_b = 0;
    settings.put_in_force();
    const filter_case c{settings, static_cast<unsigned>(L), sequences.make(random.number(100, 700), L, L)};
    if (CBatchBound::applies(settings.bound(c.L))) check_clusters(c);
  }
  EXPECT_GT(counts.wanted, tried(5000U));
}

TEST_F(BatchBound, KeepsClustersOfAFewCandidatesAmongOthers) {
  CRandomDna random(8);
  for (int round = 0; round < 20 && !HasFailure(); ++round) {
    const int L = random.number(8, random.coin() ? 64 : 200);
    candidate_settings settings;
    settings.longest = static_cast<unsigned>(L);
    settings.min_score_b = 0;
    // As much as two copies have, and a little less or more.
    settings.min_score = random.number(L - 4, L + 2);
    settings.put_in_force();
    const std::string unit = random.sequence("ACGT", L);
    std::string symbols = random.sequence("ACGT", random.number(0, 300)) + unit + unit + random.sequence("ACGT", 200);
    symbols[symbols.size() - 200 - static_cast<std::size_t>(random.number(1, L))] = 'A';
    check_clusters({settings, static_cast<unsigned>(L), symbols});
  }
  EXPECT_GT(counts.wanted, 100U);
}

// Paths drift round the circle of diagonals, in both directions, and the rows are used up.
TEST_F(BatchBound, KeepsWhatTheBoundAsksForWherePathsDriftFar) {
  CRandomDna random(10);
  for (int round = 0; round < tried(12) && !HasFailure(); ++round) {
    const int L = random.one_of(std::vector<int>{1, 2, 3, 5, 17, 39, 40, 41, 64, 70});
    candidate_settings settings;
    settings.longest = static_cast<unsigned>(L);
    settings.mismatch_score = random.number(-12, -5);
    settings.indel_score = random.number(-3, -2);
    settings.min_score = random.number(60, 240 - L);
    settings.min_score_b = 0;
    settings.put_in_force();
    const std::string unit = random.sequence("ACGT", L);
    std::string symbols;
    const bool are_longer = random.coin();
    for (int copies = random.number(3, 3000 / (L + 30)); copies > 0; --copies) {
      const int at = random.number(0, L);
      const std::string inserted = random.sequence("ACGT", are_longer ? random.number(0, L / 4 + 1) : 0);
      symbols += unit.substr(0, static_cast<std::size_t>(at)) + inserted;
      if (at < L) symbols += unit.substr(static_cast<std::size_t>(are_longer ? at : std::min(L, at + 1 + L / 6)));
    }
    const filter_case c{settings, static_cast<unsigned>(L), symbols.substr(0, 900)};
    check(c, yardstick::bound, 64);
    check_clusters(c);
  }
  EXPECT_GT(counts.wanted, tried(150U));
}

// The candidates next to each end of a record are tested like all others.
TEST_F(BatchBound, DropsRandomCandidatesNextToTheEnds) {
  CRandomDna random(11);
  candidate_settings settings;
  settings.longest = 60;
  settings.put_in_force();
  counts = {};
  check_filter(
      {settings, 60, random.sequence("ACGT", 200)}, yardstick::bound,
      [](const filter_case& c) { return keep_of_batches(c, 64); }, counts);
  EXPECT_EQ(counts.kept, 0U);
}

TEST_F(BatchBound, DropsClustersOfARandomSequence) {
  CRandomDna random(9);
  candidate_settings settings;
  settings.longest = 300;
  settings.put_in_force();
  for (const unsigned L : {30U, 50U, 100U, 150U, 200U, 300U}) {
    counts = {};
    check_clusters({settings, L, random.sequence("ACGT", tried(3000))});
    EXPECT_EQ(counts.share_of_unwanted_kept(), 0) << L;
  }
}

TEST_F(BatchBound, IsNarrowWhereScoresFitAByte) {
  EXPECT_TRUE(CBatchBound::is_narrow({119, 5, 5, 119, 130}));
  EXPECT_FALSE(CBatchBound::is_narrow({120, 5, 5, 119, 60}));
  EXPECT_FALSE(CBatchBound::is_narrow({119, 5, 5, 119, 131}));
}

TEST_F(BatchBound, AppliesWhereScoresFitTwoBytes) {
  EXPECT_TRUE(CBatchBound::applies({2000, 5, 5, 2000, 29999}));
  EXPECT_FALSE(CBatchBound::applies({2001, 5, 5, 2000, 60}));
  EXPECT_FALSE(CBatchBound::applies({10, 5, 5, 10, 30000}));
  EXPECT_FALSE(CBatchBound::applies({10, 5, 5, 10, 0}));
}

}  // namespace
