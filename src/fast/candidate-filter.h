#ifndef QUARVO_FAST_CANDIDATE_FILTER_H
#define QUARVO_FAST_CANDIDATE_FILTER_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "bit-planes.h"

// Which candidates of imperfect mode are worth extending.
//
// A candidate (p, L) that is not accepted changes nothing: only accepted repeats write the mask. So every candidate that
// provably stays below the minimum score may be skipped before the mask is even looked at, and whether it does is a
// function of the sequence, p, L and the parameters alone. Contract: every candidate that can be accepted is kept.
//
// This is the one place that decides which tests run for which unit length and parameters; each test states its own
// premises and argument.
class CCandidateFilter {
 public:
  // For the candidates of the sequence [sequence, sequence + length), which must outlive the filter and not change.
  CCandidateFilter(const char* sequence, std::size_t length);

  // The candidates of unit length L to look at: bit p % 64 of word p / 64 for position p. Positions at or behind
  // `length` are never set. Valid until the next call.
  const std::vector<std::uint64_t>& candidates(unsigned L, int min_score);

 private:
  const char* sequence;
  std::size_t length;
  CBitPlanes planes;
  std::vector<std::uint64_t> kept;

  void keep_all();
};

#endif
