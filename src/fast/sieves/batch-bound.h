#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "alignment-program.h"

// The symbols of a record.
struct symbol_range {
  const char* begin;
  const char* end;
};

// The alignment bound (alignment-program.h) for a batch of candidates, one in each byte lane of a vector.
//
// A lane holds score + b + 1, so that subtraction with saturation at 0 is the death of a path; a byte where the scores
// fit one, else two. Rows are sequence symbols, with one vector for each diagonal (unit symbols minus sequence symbols
// consumed). Unlike the bit planes, which see all positions, this sees only what they left, so it pays to be exact:
// nothing is rounded. Outside the record there are symbols that equal no other.
//
// For example, one lane for the unit ACGTTG, b = 6 and penalties of 5, so that it holds score + 7. Beside the scores
// that a row begins with stands the unit symbol that it compares, and a copy that lacks a T follows:
//
//   row  symbol    diagonal -2     -1      0     +1
//    0     A                            7 A            matches, as rows 1 to 3
//    4     G                           11 T            11 - 5 = 6 goes to -1 (insertion), to 0 (mismatch) and, in this
//                                             6 G      row still, to +1 (deletion), where G matches: 7
//    5     A                     6 T    6 G   7 A      each 6 leaves 1 on its diagonal and beside it, where there is
//    6     C              1 T    1 G    1 A   8 C      no more; 1 is the score -b, so the next mismatch is the end of
//    7     G                                  9 G      these paths, and the one with the deletion goes on alone
//
// Diagonals L apart are one: on both the next unit symbol is the same one of the circle, and so is all that follows.
// For L = 3, a path that has consumed 7 symbols of the sequence and 5 of the unit, and one that has consumed 7 and 8,
// both compare the eighth symbol with unit symbol 2, and where it differs both may be at (8, 6 or 9), (8, 5 or 8) or
// (7, 6 or 9). So no path ever leaves the diagonals that are followed, and a lane is undecided only if a path outlives
// the last row; it is kept then.
//
// Memory: 600 bytes for each symbol of the unit, kept from call to call.
class CBatchBound {
 public:
  static constexpr std::size_t most_candidates = 64;
  static constexpr unsigned longest_unit = 2000;

  // Symbols looked at on each side. On random sequence hardly a path gets farther without the score. Beside the copies
  // of interspersed repeats and in satellites, paths of long units live longer.
  static constexpr int rows(unsigned L) {
    return L < 40 ? 24 + 2 * static_cast<int>(L < 4 ? 4 : L) : 200 + 3 * static_cast<int>(L);
  }
  // The same for consecutive candidates.
  static constexpr int rows_of_next(unsigned L) { return 24 + 2 * static_cast<int>(L < 4 ? 4 : L); }

  // Premises: a unit that fits, and scores that fit two bytes.
  static bool applies(const alignment_bound& bound) {
    return bound.L <= longest_unit && bound.T > 0 && bound.T < 30000 && bound.T + bound.b < 32000;
  }
  // Whether the scores even fit a byte.
  static bool is_narrow(const alignment_bound& bound) {
    return bound.L < 120 && bound.T < 250 && bound.T + bound.b < 250;
  }

  // Symbols that consecutive candidates read on each side of the unit.
  static constexpr std::size_t reach(unsigned L) { return static_cast<std::size_t>(rows_of_next(L)) + 16; }

  // The same for clusters of candidates, those at positions[i] .. positions[i] + size - 1: bit i of the result is set
  // if any of them can reach bound.T.
  //
  // Candidates next to each other meet the same symbols, so the paths of a cluster are followed together: all begin on
  // one diagonal, each at its own row, and a place keeps the highest score of any of them, which can do all that a
  // lower one can. What tells the candidates apart is where their unit ends. Until then no path knows of it; after the
  // end of the first unit and up to that of the last one a symbol may match if it equals either the next symbol of the
  // longer view or that of the next copy, and must match only if it equals both. The scores to the left begin with the
  // best of the cluster to the right. Premises: applies(), and 0 < size <= L.
  //
  // For example, to the right for L = 4 and the cluster of p and p + 1; symbols are given by their distance from p:
  //
  //   symbol                       4   5   6   7   8   9  10  11  12  13
  //   compared with for p          0   1   2   3   0   1   2   3   0   1     unit 0 .. 3, which ends in front of 4
  //   compared with for p + 1          1   2   3   4   1   2   3   4   1     unit 1 .. 4, which ends in front of 5
  //   a path begins                *   *
  //   may match                    0   1   2   3  0|4  1   2   3  0|4  1     either is enough
  //   must match                   0   1   2   3  0&4  1   2   3  0&4  1     both, else an edit is tried as well
  //
  // In each copy size - 1 symbols, here one, tell the candidates apart. To the left it is the mirror image, and p + 1
  // begins.
  std::uint64_t clusters_may_reach(const alignment_bound& bound, int size, const symbol_range& record,
                                   const char* const* positions, std::size_t count, bool Ns_match);

  // A cluster, of its unit length and minimum score.
  struct cluster {
    alignment_bound bound;
    const char* position;  // of the first of its candidates
  };
  // Bit i is set if cluster i can reach its score or was given up, and if it was given up.
  struct mixed_result {
    std::uint64_t kept;
    std::uint64_t given_up;
  };

  // The same for clusters of several unit lengths, which fill the lanes where few are left of each. The lanes compare
  // symbols of units of their own, laid out over and over; as diagonals are not one in all of them, clusters are given
  // up when paths come to lie twice as far apart as the shortest unit is long. Premises: those above for each of them,
  // the same penalties, and scores that take two bytes anyway.
  mixed_result mixed_clusters_may_reach(const cluster* clusters, std::size_t count, int size,
                                        const symbol_range& record, bool Ns_match);

  // Bit i of the result: the candidate at position + i can reach bound.T, for `count` candidates. As many as reach(L)
  // symbols must be readable in front of `position`, and L + reach(L) + most_candidates from it on; bytes that are no
  // symbols mark the ends.
  std::uint64_t may_reach_next(const alignment_bound& bound, const char* position, std::size_t count, bool Ns_match);

  // Bit i of the result: the candidate at positions[i] can reach bound.T. A neutral N counts as a match.
  std::uint64_t may_reach(const alignment_bound& bound, const symbol_range& record, const char* const* positions,
                          std::size_t count, bool Ns_match);

  // What the vector code works in.
  struct memory {
    std::vector<std::uint8_t> unit;
    std::vector<std::uint8_t> text;
    std::vector<std::uint8_t> scores;
  };

 private:
  memory used;
};
