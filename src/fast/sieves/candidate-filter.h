#ifndef QUARVO_FAST_CANDIDATE_FILTER_H
#define QUARVO_FAST_CANDIDATE_FILTER_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "alignment-program.h"
#include "batch-bound.h"
#include "bit-planes.h"
#include "potential-filter.h"

// Which candidates of imperfect mode are worth extending.
//
// A candidate (p, L) that is not accepted changes nothing: only accepted repeats write the mask. So every candidate
// that provably stays below the minimum score may be skipped before the mask is even looked at, and whether it does is
// a function of the sequence, p, L and the parameters alone. Contract: every candidate that can be accepted is kept.
//
// This is the one place that decides which tests run for which unit length and parameters; each test states its own
// premises and argument.
class CCandidateFilter {
 public:
  // For the candidates of the sequence [sequence, sequence + length) under the parameters and the minimum scores by
  // unit length. All of these must outlive the filter and not change.
  CCandidateFilter(const char* sequence, std::size_t length, const int* min_scores);

  // Interpreted programs pay when all of their lanes are in use; up to this length a record is tested exactly at once
  // where no kernel serves.
  static constexpr std::size_t longest_short_record = 1500;

  // Off, every candidate is kept. The results are the same then, only later, and tests compare them.
  static inline bool tests_enabled = true;

  // The candidates of unit length L to look at: bit p % 64 of word p / 64 for position p. Positions at or behind
  // `length` are never set. Valid until the next call.
  const std::vector<std::uint64_t>& candidates(unsigned L);

  // Of the candidates at `positions`, in ascending order, those that a second, tighter test keeps: bit i for
  // positions[i]. Of the unit length that candidates() was called for last.
  std::uint64_t still_candidates(const char* const* positions, std::size_t count);

 private:
  const char* sequence;
  std::size_t length;
  const int* min_scores;
  alignment_bound bound{};
  CBitPlanes planes;
  CPotentialFilter potential;
  CBatchBound batch;
  std::vector<std::uint64_t> kept;

  std::vector<char> padded;  // a short record with room on both sides

  bool is_short() const;
  void test_short_record();
  void keep(std::size_t first, std::uint64_t bits);
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

// Collects candidates for the tighter test, and then takes them in the order of adding.
//
// What the tighter test says depends on the sequence alone, so it does not matter that candidates are taken later than
// they are added. Whether a candidate may be anchored does change meanwhile: the mask closes where a repeat is
// accepted, and opens again at its edits. So `take` must look at the mask itself, and candidates that the mask refused
// when they were added are put to it again, untested, if a repeat was accepted in between.
template <typename Take>
class CCandidateBatch {
 public:
  // take(p) extends a candidate that the mask admits, and returns whether the mask has changed.
  CCandidateBatch(CCandidateFilter& its_filter, Take take_candidate) : filter(its_filter), take(take_candidate) {}

  // Adds a candidate that the mask admits now.
  void add(const char* p) {
    tested[tested_count++] = p;
    add_refused(p);
    if (tested_count == tested.size()) finish();
  }

  // Adds a candidate that the mask refuses now.
  void add_refused(const char* p) {
    candidates[count++] = p;
    if (count == candidates.size()) finish();
  }

  // To be called behind the last candidate.
  void finish() {
    const std::uint64_t kept = filter.still_candidates(tested.data(), tested_count);
    bool has_mask_changed = false;
    for (std::size_t i = 0, t = 0; i != count; ++i) {
      const bool is_tested = t != tested_count && tested[t] == candidates[i];
      const bool is_wanted = is_tested ? (kept >> t & 1) != 0 : has_mask_changed;
      if (is_tested) ++t;
      if (is_wanted && take(candidates[i])) has_mask_changed = true;
    }
    count = 0;
    tested_count = 0;
  }

 private:
  CCandidateFilter& filter;
  Take take;
  std::array<const char*, 4 * CBatchBound::most_candidates> candidates{};
  std::array<const char*, CBatchBound::most_candidates> tested{};
  std::size_t count = 0;
  std::size_t tested_count = 0;
};

#endif
