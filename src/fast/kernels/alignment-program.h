#pragma once

#include <cstdint>
#include <vector>

// The alignment bound as straight-line logic over bit planes.
//
// What is bounded. A candidate (p, L) is extended to the right from score 0 and then to the left from the score F that
// this gave. An edit is made only at a symbol that does not match and only if the score after it is at least -b, where
// b = L + P - 1 and P is 1 when longer repeats are preferred. Take all alignment paths that match whenever they can,
// edit only at mismatches and never fall below -b by an edit. The recursion depth, a finite score reduction, the choice
// of edits and the rules at the end only restrict the paths that an extension may take, so the best score over all
// these paths, from 0 to the right and from there to the left, is at least the candidate's final score. A neutral N is
// counted as a match, which gives it 1 instead of 0 and the same continuation. Symbols beyond the ends of the record
// may be anything: the score at the end of the record is reached before them.
//
// How it is bounded. One bit plane holds, for many candidates side by side, whether a path can be at (row, diagonal,
// score): row symbols of the sequence consumed, diagonal = unit symbols consumed minus row. A step along a path is an
// AND with the plane of matches or its complement. On diagonals that are L apart the next unit symbol is the same one
// of the circle, and so is all that follows, so these are one plane; there are L diagonals, 0 to L - 1. Scores only
// ever get rounded up, and where a plane would be rare or the rows end, its candidates are kept instead. So the test
// keeps every candidate whose final score can reach T.
//
// For example, the whole program for L = 2, b = 2, T = 4 and penalties of 6. E(i,j) is the plane of "the symbols at
// p + i and p + j are equal", the unit is at 0 and 1, and s<n> are the candidates with a path of score n, all of them
// on diagonal 0. Rightwards from the score 0, then leftwards from the best score, rounded up to 1 or to T - 1:
//
//   row 0   s0 = all                                       row 4   s1 = ~above_1, s3 = above_1
//   row 1   s1 = s0 & E(2,0)   above_1 |= s1 & E(3,1)              keep |= s3 & E(-1,1)
//   row 2   s2 = s1 & E(3,1)                               row 5   s2 = s1 & E(-1,1)
//   row 3   s3 = s2 & E(4,0)   keep |= s3 & E(5,1)         row 6   s3 = s2 & E(-2,0)   keep |= s3 & E(-3,1)
//
// That is all, since an edit would lead from 3 to -3, below -b. Penalties of 5 allow the edits from 3 to -2. What they
// add to the right, with m = s3 & ~E(5,1), the paths of row 3 at a mismatch:
//
//   diagonal   0 (mismatch)               1 (insertion or deletion, as -1 and 1 are one diagonal)
//   row 3                                 m, by a deletion, still in this row      scores -2
//   row 4      m                          m, by an insertion, | m & E(5,0)         scores -2; -2 and -1, rounded up: m
//   row 5      m & E(6,0)                 m & E(6,1)                               scores -1, 0
//   row 6      m & E(6,0) & E(7,1)        m & E(6,1) & E(7,0)                      few by now: keep |= either of them
//
// The program for one unit length is made from the scoring: at run time, to be interpreted by alignment-filter.h, or,
// for the default scoring, when Quarvo is built, to be compiled (alignment-kernels.h).

// What the bound depends on. Penalties are positive.
struct alignment_bound {
  unsigned L;
  int mismatch_penalty;
  int indel_penalty;
  int b;
  int T;

  bool operator==(const alignment_bound&) const = default;
};

// One bit operation; every operand is a slot, that is, an index of a plane in the interpreter's memory.
struct alignment_program {
  using slot = std::uint16_t;

  // matches = whether the sequence symbol at offset `a` from p equals the one at offset `b`.
  struct compare_op {
    slot matches;
    std::int32_t a;
    std::int32_t b;
  };
  // to = hit & matches
  struct run_op {
    slot to;
    slot hit;
    slot matches;
  };
  // to = (hit & hit_matches) | (miss & ~miss_matches)
  struct fork_op {
    slot to;
    slot hit;
    slot hit_matches;
    slot miss;
    slot miss_matches;
  };
  // to = (hit & hit_matches) | (miss & ~hit_matches) | (insertion & ~insertion_matches) | (deletion &
  // ~deletion_matches)
  struct join_op {
    slot to;
    slot hit;
    slot miss;
    slot hit_matches;
    slot insertion;
    slot insertion_matches;
    slot deletion;
    slot deletion_matches;
  };
  // to |= from & matches
  struct hit_op {
    slot to;
    slot from;
    slot matches;
  };
  // to |= (any of from) & ~matches
  struct miss_op {
    static constexpr unsigned width = 4;
    slot to;
    slot matches;
    slot from[width];
  };
  // The operations of a row, in the order of execution. A deletion stays in its row, so only joins read planes of the
  // row itself, and only ones before them.
  struct row {
    std::vector<compare_op> compares;
    std::vector<run_op> runs;
    std::vector<fork_op> forks;
    std::vector<join_op> joins;
    std::vector<hit_op> hits;
    std::vector<miss_op> misses;
  };

  // Slots with a fixed meaning.
  static constexpr slot zero = 0;
  static constexpr slot ones = 1;
  static constexpr slot keep = 2;  // the result: candidates that may be accepted

  std::vector<row> rows;
  std::vector<slot> accumulators;  // to be cleared at the start, `keep` among them
  unsigned slots = 0;
  unsigned operations = 0;
  int reach = 0;             // the largest distance from p that is compared
  double expected_kept = 1;  // share of the candidates kept on random sequence

  bool is_empty() const { return rows.empty(); }
};

// Makes the program. It is empty when the test would keep too much, or cost too much, to be of use.
alignment_program make_alignment_program(const alignment_bound& bound);
