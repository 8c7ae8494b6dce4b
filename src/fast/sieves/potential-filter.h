#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "batch-bound.h"
#include "position-set.h"

// A bound for long units that serves all unit lengths at once: the self-alignment potential.
//
// While an extension to the right is in one copy of its unit, it aligns the sequence with itself: the symbol at
// position x with the one at x - D, where the distance D grows with an insertion and shrinks with a deletion. That
// comparison does not depend on the candidate, so the best continuation from (x, D) is computed once for all candidates
// that come by. Let V(x, D) be the best value, 0 at least, over all paths from there that match whenever they can and
// edit only at mismatches, where a match is worth 1 + e, a mismatch e - m, a deletion e - g and an insertion -g: the
// score, plus e for every unit symbol consumed (m, g: the penalties). W is the mirror image to the left.
//
// A candidate (p, L) enters the first copy at (p + L, L). It enters a later one where the cursor is at the beginning of
// the unit again, at some position x with the distance x - p. Let f(1) = V(p + L, L) and f(j) the best V(x, x - p) over
// the x where a path may enter copy j, and let b = L + P - 1 (no score after an edit is below -b).
// - Leaving copy j, a path has consumed L more unit symbols: its score there is at most s(j) = s(j - 1) + f(j) - e L,
//   where s(0) is the score it started with. If s(j) < -b, no path leaves copy j.
// - Gaining z points in copy j it has consumed at least z unit symbols, so z <= f(j) / (1 + e), and the best score met
//   there is at most s(j - 1) + f(j) / (1 + e).
// - Entering copy j with i insertions made, it has at most (j - 1) L matches, so (j - 1) L - g i >= -b - s(0). With d
//   deletions made, (j - 1) L - d - g d >= -b - s(0). So x - p lies from j L - ((j - 1) L + b + s(0)) / (g + 1) to
//   j L + ((j - 1) L + b + s(0)) / g.
// An accepted candidate has a score of T / 2 or more after the right extension, or less than that, s(0) <= (T - 1) / 2,
// and gains T - s(0) to the left. So it is kept if the bound to the right reaches T / 2, or the bound to the left,
// begun with s(0) = (T - 1) / 2, exceeds that by the rest of T; and wherever paths outlive the copies that are looked
// at.
//
// For example, L = T = 30, b = 30, e = 1, and the values to the right are 13 in the first copy and no more than 20 in
// later ones. The right extension needs 15 points:
//
//   copy   value   best score met in it        score at which it is left, at most
//    1      13       0 + 13 / 2 =  6             0 + 13 - 30 = -17
//    2      20     -17 + 20 / 2 = -7           -17 + 20 - 30 = -27
//    3      20     -27 + 20 / 2 = -17          -27 + 20 - 30 = -37, less than -b: no path gets farther
//
// Nothing is found to the right. To the left, the bound begins at (30 - 1) / 2 = 14 and must reach 30.
//
// Values are capped. That is sound: from a score of s a path never loses more than s + b in a copy, so where a value on
// it was capped at C, the copy's value is C - s - b or more; and where s(j - 1) + b + f(j) is C or more the candidate
// is kept. For the same reason C may stand for what is not known where a stretch of the sequence ends.
//
// A larger e lets paths die sooner, but the values of random sequence grow with it, without limit from some e on.
//
// Premises: g >= 3, m >= 3, T > 3. Cost: about half a nanosecond for a position and distance; the distances reach two
// to six times the longest unit.
class CPotentialFilter {
 public:
  struct settings {
    int mismatch_penalty;  // positive, as the other
    int indel_penalty;
    int prefer_longer;  // P
    bool Ns_match;
    unsigned shortest;  // unit lengths to be tested
    unsigned longest;
    std::function<int(unsigned)> min_score;  // by unit length
  };

  // Whether the premises hold.
  static constexpr bool applies(int mismatch_penalty, int indel_penalty, int min_score) {
    return mismatch_penalty >= 3 && indel_penalty >= 3 && min_score > 3;
  }

  // The longest unit length that should be tested together with the shortest one: values of a byte cost half as much.
  static unsigned longest_alike(const settings& s);

  // Tests all candidates of the sequence [sequence, sequence + length) for the lengths shortest .. longest, as many of
  // them, from the shortest on, as the memory for what is kept allows. The symbols of `around` may be read; candidates
  // in the sequence whose unit ends there too are tested as candidates of all of these.
  void run(const char* sequence, std::size_t length, const settings& s) {
    run(sequence, length, s, {sequence, sequence + length});
  }
  void run(const char* sequence, std::size_t length, const settings& s, const symbol_range& around);

  // Positions of one unit length. What is kept lies close together, so while it is little those words of a bit for each
  // position are held that are not 0, some of them twice; then all.
  class CPositions {
   public:
    // Whoever goes through positions that lie close together adds them with the same `in_hand`, 0 at first. Returns by
    // how many bytes the memory for it has grown.
    std::size_t add(std::size_t p, std::size_t length, std::size_t& in_hand);
    void place(CPositionSet& to) const;
    std::size_t bytes() const { return words.size() * sizeof(word) + all.bytes(); }

   private:
    struct word {
      std::uint32_t number;  // of the 32 positions
      std::uint32_t bits;
    };
    std::vector<word> words;
    CPositionSet all;
  };

  // Whether the last run has tested this unit length.
  bool has(unsigned L) const { return L >= first_length && L - first_length < found.size(); }

  // Adds the candidates of a tested unit length that may be accepted.
  void place(unsigned L, CPositionSet& kept) const;

 private:
  unsigned first_length = 0;
  std::vector<CPositions> found;  // by L - first_length
};
