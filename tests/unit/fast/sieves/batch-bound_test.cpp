// The alignment bound in lanes of one byte or two: what it keeps, compared with the bound and the extension themselves.

#include "batch-bound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
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

// Clusters of a few unit lengths in one batch, and what is kept of them and given up.
class MixedClusters : public BatchBound {
 protected:
  std::size_t wanted = 0;
  std::size_t tested = 0;
  std::size_t kept = 0;
  std::size_t given_up = 0;

  void check_mixed(CRandomDna& random, const candidate_settings& settings, const std::string& symbols) {
    std::map<unsigned, CPositionSet> wanted_of;
    for (int lengths = random.number(1, 4); lengths > 0; --lengths) {
      const auto L = static_cast<unsigned>(random.number(64, static_cast<int>(settings.longest)));
      ASSERT_TRUE(CBatchBound::applies(settings.bound(L)));
      wanted_of[L] = must_be_kept({settings, L, symbols}, yardstick::bound);
    }
    const CExactSymbols exact(symbols);
    std::vector<CBatchBound::cluster> clusters;
    while (clusters.size() < CBatchBound::most_candidates) {
      const auto any = std::next(wanted_of.begin(), random.number(0, static_cast<int>(wanted_of.size()) - 1));
      const auto block = static_cast<std::size_t>(random.number(0, static_cast<int>(symbols.size()) / 64));
      clusters.push_back({settings.bound(any->first), exact.range().begin + 64 * block});
      if (random.number(0, 40) == 0) break;
    }
    on_each_target([&] { check_batch(clusters, wanted_of, exact.range()); });
  }

 private:
  void check_batch(const std::vector<CBatchBound::cluster>& clusters, const std::map<unsigned, CPositionSet>& wanted_of,
                   const symbol_range& record) {
    CBatchBound batch_bound;
    const CBatchBound::mixed_result result =
        batch_bound.mixed_clusters_may_reach(clusters.data(), clusters.size(), 64, record, Ns_are_neutral());
    EXPECT_EQ(result.given_up & ~result.kept, 0U);
    EXPECT_EQ(clusters.size() == 64 ? 0 : result.kept >> clusters.size(), 0U) << "bits without a cluster are set";
    for (std::size_t i = 0; i < clusters.size(); ++i) {
      const auto& [bound, position] = clusters[i];
      const auto first = static_cast<std::size_t>(position - record.begin);
      const CPositionSet& all = wanted_of.at(bound.L);
      const bool is_wanted = first < all.end() && all.block_bits(first, 64) != 0;
      const bool is_kept = (result.kept >> i & 1) != 0;
      const bool is_given_up = (result.given_up >> i & 1) != 0;
      ++tested;
      wanted += is_wanted ? 1U : 0U;
      kept += is_kept ? 1U : 0U;
      given_up += is_given_up ? 1U : 0U;
      EXPECT_TRUE(is_kept || !is_wanted) << "lost: L " << bound.L << ", from " << first;
      // By themselves clusters are kept where diagonals are one, and sooner.
      if (is_kept && !is_given_up) {
        EXPECT_EQ(batch_bound.clusters_may_reach(bound, 64, record, &position, 1, Ns_are_neutral()), 1U)
            << "kept: L " << bound.L << ", from " << first;
      }
    }
  }
};

TEST_F(MixedClusters, AreKeptWithACandidateThatTheBoundAsksFor) {
  CRandomDna random(12);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(40) && !HasFailure(); ++round) {
    const int longest = random.number(128, 260);
    candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(longest));
    settings.mismatch_score = std::min(settings.mismatch_score, -4);
    settings.indel_score = random.number(-6, -3);
    settings.min_score = random.one_of(std::vector<int>{30, 60, longest / 2});
    settings.min_score_b = 0;
    settings.put_in_force();
    const std::string symbols = random.coin()
                                    ? sequences.make(random.number(300, 700), random.number(64, longest), longest)
                                    : symbols_of_data_file("human_alpha_satellite.fa").substr(0, 700);
    check_mixed(random, settings, symbols);
  }
  EXPECT_GT(wanted, tried(50U));
  EXPECT_GT(tested - kept, tried(100U));
  EXPECT_GT(kept - given_up, tried(100U));
}

// Cheap indels lead paths farther apart than there is room for.
TEST_F(MixedClusters, AreGivenUpWherePathsLieFarApart) {
  CRandomDna random(13);
  for (int round = 0; round < 3 && !HasFailure(); ++round) {
    candidate_settings settings;
    settings.longest = static_cast<unsigned>(random.number(64, 200));
    settings.mismatch_score = random.number(-12, -5);
    settings.indel_score = random.number(-3, -2);
    settings.min_score = random.number(200, 600);
    settings.min_score_b = 0;
    settings.put_in_force();
    check_mixed(random, settings, random.sequence(random.coin() ? "AC" : "ACG", 700));
  }
  EXPECT_GT(given_up, 10U);
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
