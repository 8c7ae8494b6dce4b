#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <tuple>
#include <vector>

#include "alignment-program.h"
#include "batch-bound.h"
#include "bit-planes.h"
#include "potential-filter.h"
#include "scoring.h"

// Alignment programs that were made, for all records of a run.
class alignment_programs {
 public:
  const alignment_program& program_for(const alignment_bound& bound);

 private:
  std::map<std::tuple<unsigned, int, int, int, int>, alignment_program> made;
};

// Which candidates of imperfect mode are worth extending.
//
// A candidate (p, L) that is not accepted changes nothing: only accepted repeats write the mask. So every candidate
// that provably stays below the minimum score may be skipped before the mask is even looked at, and whether it does is
// a function of the sequence, p, L and the parameters alone. Contract: every candidate that can be accepted is kept.
//
// This is the one place that decides which tests run for which unit length and parameters; each test states its own
// premises and argument.
//
// Under the default scoring (penalties of 5, P = 1, T the larger of 6 and L, N's neutral) it comes to this, except that
// there are no candidates at all where a record has fewer than T symbols beside the unit:
//
//   record          L              candidates()                                          still_candidates()
//   up to 1500      1 to 12        compiled alignment program                            keeps all
//                   13 to 119      batches of consecutive candidates                     keeps all
//                   120 and more   as longer records
//   longer          1 to 20        compiled alignment program                            batch
//                   21 to 31       potential, clusters of 16, then of 4                  batch
//                   32 to 63       potential, clusters of 32, then of 8                  batch
//                   64 to 128      potential, clusters of 64, then of 16                 batch
//                   129 to 2000    potential, clusters of 64                             batch
//                   2001 and more  potential                                             keeps all
//
// Batches and clusters hold scores of one byte up to L = 119, and of two bytes above. Other scorings have interpreted
// programs in place of compiled ones or, where these are of no use, clusters of all candidates from L = 8 on; in short
// records, runs of matches are asked for in front of the batches. With a penalty below 5 the potential serves from 16
// on, and with one below 3, or some T of 3 or less, not at all.
class CCandidateFilter {
 public:
  // For the candidates of the sequence [sequence, sequence + length) under the parameters and the minimum scores by
  // unit length. All of these must outlive the filter and not change.
  CCandidateFilter(const char* its_sequence, std::size_t its_length, const int* its_min_scores,
                   const scoring& its_rules, unsigned its_longest_unit, alignment_programs& its_programs)
      : CCandidateFilter({its_sequence, its_sequence + its_length}, {its_sequence, its_sequence + its_length},
                         its_min_scores, its_rules, its_longest_unit, its_programs) {}
  // The same for a window of a record: the contract holds for the candidates that lie as far as context() from an end
  // of the window that is no end of the record. Time and memory grow with the window alone.
  CCandidateFilter(const symbol_range& window, const symbol_range& its_record, const int* its_min_scores,
                   const scoring& its_rules, unsigned its_longest_unit, alignment_programs& its_programs);

  // A multiple of 64 symbols: those of the unit and what a program reads beside it. All other tests read the record.
  static constexpr std::size_t context(unsigned longest) { return (longest + std::size_t{191}) / 64 * 64; }

  // Interpreted programs pay when all of their lanes are in use; up to this length a record is tested exactly at once
  // where no kernel serves.
  static constexpr std::size_t longest_short_record = 1500;

  // The candidates of unit length L to look at: bit p % 64 of word p / 64 for position p. Positions at or behind
  // `length` are never set. Valid until the next call.
  const std::vector<std::uint64_t>& candidates(unsigned L);

  // Of the candidates at `positions`, in ascending order, those that a second, tighter test keeps: bit i for
  // positions[i]. Of the unit length that candidates() was called for last.
  std::uint64_t still_candidates(const char* const* positions, std::size_t count);

 private:
  symbol_range record;
  const char* sequence;
  std::size_t length;
  const int* min_scores;
  scoring rules;
  unsigned longest_unit;
  alignment_programs& programs;
  alignment_bound bound{};
  CBitPlanes planes;
  CPotentialFilter potential;
  CBatchBound batch;
  std::vector<std::uint64_t> kept;

  std::vector<char> padded;  // a short record with room on both sides

  bool is_short() const;
  void test_short_record();
  void keep(std::size_t first, std::uint64_t bits);
  std::size_t record_length() const { return static_cast<std::size_t>(record.end - record.begin); }
  bool is_window() const { return length != record_length(); }
  bool is_in_window(int reach) const;
  bool has_room(unsigned L) const;
  bool is_for_potential(unsigned L) const;
  CPotentialFilter::settings potential_settings(unsigned shortest) const;
  void test_potential(unsigned L);
  void test_clusters();
  void test_clusters(unsigned size);
  bool run_kernel();
  bool test_alignment();
  void build_planes(int reach);
  void keep_all();
};
