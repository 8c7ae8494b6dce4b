#ifndef QUARVO_FAST_BATCH_BOUND_H
#define QUARVO_FAST_BATCH_BOUND_H

#include <cstddef>
#include <cstdint>

#include "alignment-program.h"

// The alignment bound (alignment-program.h) for a batch of candidates, one in each byte lane of a vector.
//
// A lane holds score + b + 1, so that subtraction with saturation at 0 is the death of a path; a byte where the scores
// fit one, else two. Rows are sequence symbols, with one vector for each diagonal. Unlike the bit planes, which see all
// positions, this sees only what they left, so it pays to be exact: nothing is rounded. Lanes that are undecided after
// the last row, or leave the band, are kept. Memory: some hundred bytes for each symbol of the unit.
class CBatchBound {
 public:
  static constexpr std::size_t most_candidates = 64;
  static constexpr unsigned longest_unit = 2000;

  // Symbols looked at on each side. On random sequence hardly a path gets farther without the score; long units meet
  // diverged copies of interspersed repeats, which they must outlast.
  static constexpr int rows(unsigned L) {
    return L < 120 ? 24 + 2 * static_cast<int>(L < 4 ? 4 : L) : 200 + 4 * static_cast<int>(L);
  }
  // Diagonals on each side of the main one.
  static constexpr int band(unsigned L) { return L < 120 ? 30 : static_cast<int>(L) / 3; }

  // Premises: a unit that fits, and scores that fit two bytes.
  static bool applies(const alignment_bound& bound) {
    return bound.L <= longest_unit && bound.T > 0 && bound.T < 30000 && bound.T + bound.b < 32000;
  }
  // Whether the scores even fit a byte.
  static bool is_narrow(const alignment_bound& bound) {
    return bound.L < 120 && bound.T < 250 && bound.T + bound.b < 250;
  }

  // Candidates of a cluster, and the rows that its paths are followed for.
  static constexpr int cluster = 64;
  static constexpr int cluster_rows(unsigned L) { return rows(L) - cluster; }

  // Symbols that are read on each side of the unit. Candidates closer to an end of the record must not be asked for.
  static constexpr std::size_t reach(unsigned L) { return static_cast<std::size_t>(rows(L)) + 16; }

  // The same for clusters of candidates, those at positions[i] .. positions[i] + cluster - 1: bit i of the result is
  // set if any of them can reach bound.T.
  //
  // Candidates next to each other meet the same symbols, so the paths of a cluster are followed together: all begin on
  // one diagonal, each at its own row, and a place keeps the highest score of any of them, which can do all that a
  // lower one can. What tells the candidates apart is where their unit ends. Until then no path knows of it; a cluster
  // of which a path gets that far, from its first candidate's view, is undecided and kept. The scores to the left begin
  // with the best of the cluster to the right. Premise: applies().
  static std::uint64_t clusters_may_reach(const alignment_bound& bound, const char* const* positions, std::size_t count,
                                          bool Ns_match);

  // Bit i of the result: the candidate at position + i can reach bound.T, for `count` candidates. As many as reach(L)
  // symbols must be readable in front of `position`, and L + reach(L) + most_candidates from it on; bytes that are no
  // symbols mark the ends.
  static std::uint64_t may_reach_next(const alignment_bound& bound, const char* position, std::size_t count,
                                      bool Ns_match);

  // Bit i of the result: the candidate at positions[i] can reach bound.T. A neutral N counts as a match.
  static std::uint64_t may_reach(const alignment_bound& bound, const char* const* positions, std::size_t count,
                                 bool Ns_match);
};

#endif
