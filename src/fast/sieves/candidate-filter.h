#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "batch-bound.h"
#include "bit-planes.h"
#include "position-set.h"
#include "potential-filter.h"
#include "record-pool.h"
#include "scoring.h"
#include "sieve-plan.h"
#include "window-filter.h"

// Which candidates of imperfect mode are worth extending.
//
// A candidate (p, L) that is not accepted changes nothing: only accepted repeats write the mask. So every candidate
// that provably stays below the minimum score may be skipped before the mask is even looked at, and whether it does is
// a function of the sequence, p, L and the parameters alone. Contract: every candidate that can be accepted is kept.
//
// sieve-plan.h says which sieves run for which unit length and parameters; each sieve states its own premises and
// argument. `bench/sieve-plan` prints the plan of a command line.
class CCandidateFilter {
 public:
  // For the candidates of the sequence [sequence, sequence + length) under the parameters and the minimum scores by
  // unit length. All of these must outlive the filter and not change.
  CCandidateFilter(const char* its_sequence, std::size_t its_length, const int* its_min_scores,
                   const scoring& its_rules, unsigned its_longest_unit, CAlignmentPrograms& its_programs)
      : CCandidateFilter({its_sequence, its_sequence + its_length}, {its_sequence, its_sequence + its_length},
                         its_min_scores, its_rules, its_longest_unit, its_programs) {}
  // The same for a window of a record: the contract holds for the candidates that lie as far as context() from an end
  // of the window that is no end of the record. Time and memory grow with the window alone.
  CCandidateFilter(const symbol_range& window, const symbol_range& its_record, const int* its_min_scores,
                   const scoring& its_rules, unsigned its_longest_unit, CAlignmentPrograms& its_programs,
                   CRecordPool* its_pool = nullptr);

  // A multiple of 64 symbols: those of the unit and what a program reads beside it. All other tests read the record.
  static constexpr std::size_t context(unsigned longest) { return (longest + std::size_t{191}) / 64 * 64; }

  // Of the bits of a word, those whose positions are asked for as candidates of the unit length L: bit i stands for the
  // position 64 * word + i.
  using asked_for = std::function<std::uint64_t(unsigned L, std::size_t word, std::uint64_t bits)>;
  static std::uint64_t all_bits(unsigned /*L*/, std::size_t /*word*/, std::uint64_t bits) { return bits; }

  // The candidates of unit length L to look at. Valid until the next call. Costs less where few are asked for now;
  // those that are not may be asked for later, and some of them are kept untested. Where so few are left that they do
  // not fill a batch, those of longer units are tested along with them.
  const CPositionSet& candidates(unsigned L, const asked_for& are_asked = all_bits);

  // Of the candidates at `positions`, in ascending order, those that a second, tighter test keeps: bit i for
  // positions[i]. Of the unit length that candidates() was called for last.
  std::uint64_t still_candidates(const char* const* positions, std::size_t count);
  // Whether there is such a test; otherwise all are kept.
  bool has_tighter_test() const { return plan.is_tested_again; }

 private:
  symbol_range record;
  const char* sequence;
  std::size_t length;
  const int* min_scores;
  scoring rules;
  unsigned longest_unit;
  bool has_strange_Ns;
  CAlignmentPrograms& programs;
  CRecordPool* pool;  // null: each record is tested on its own
  sieve_plan plan{};
  alignment_bound bound{};
  CBitPlanes planes;
  CPotentialFilter potential;
  CWindowFilter windows;
  CBatchBound batch;
  CPositionSet kept;
  // The words of candidates of longer units that were tested ahead, by unit length: whether they are kept.
  std::map<std::pair<unsigned, std::size_t>, bool> tested_ahead;

  std::vector<char> padded;  // a short record with room on both sides

  sieve_plan plan_of(unsigned L) const;
  void find_candidates();
  void run_kernel();
  void run_program();
  void run_batches();
  CPotentialFilter::settings settings_for_all() const;
  void run_windows();
  void run_potential();
  void test_batch(unsigned size, const std::size_t* starts, std::size_t count);
  void test_clusters(unsigned size, const asked_for& are_asked);
  // A word of candidates, which is a cluster.
  struct word_of_candidates {
    unsigned L;
    std::size_t number;
  };
  bool are_few_left(unsigned L) const;
  void test_few_words(const asked_for& are_asked);
  void take_words(unsigned L, const asked_for& are_asked, std::vector<word_of_candidates>& words);
  void test_with_longer(const std::vector<word_of_candidates>& words);
  void test_alone(const std::vector<word_of_candidates>& words);
  const CBitPlanes& planes_for(int reach);
};
