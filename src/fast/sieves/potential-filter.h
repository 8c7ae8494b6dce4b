#ifndef QUARVO_FAST_POTENTIAL_FILTER_H
#define QUARVO_FAST_POTENTIAL_FILTER_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

// A bound for long units that serves all unit lengths at once: the self-alignment potential.
//
// While an extension is in the first copy of its unit, it aligns the sequence with itself: to the right, the symbol at
// position x with the one at x - D, where the distance D starts at L, grows with an insertion and shrinks with a
// deletion. That comparison does not depend on the candidate, so the best continuation from (x, D) is computed once for
// all candidates that come by. Let V(x, D) be the best value over all paths from there that match whenever they can and
// edit only at mismatches, where a match is worth 1 + e, a mismatch e - m, a deletion e - g and an insertion -g: the
// score, plus e = 4/3 for every unit symbol consumed (m, g: the penalties). W is the mirror image to the left.
//
// For a candidate (p, L) let f = V(p + L, L) and h = W(p - 1, L), b = L + P - 1 (no score after an edit is below -b),
// T its minimum score and X = e L - b. Suppose it is accepted, and let F be its score after the right extension.
// - If the right extension leaves the first copy, it has consumed L unit symbols with a score of at least -b: f >= X.
// - Else it consumed at least as many unit symbols as it has points, so f >= (1 + e) F.
// - If the left extension leaves the first copy, then h >= X - F, so h + f / (1 + e) >= X.
// - If neither does, f + h >= (1 + e) T.
// Let T be large enough that (1 + e) T >= 2 X. Then the last case is one of the others, and with q = 1 / (1 + e):
// f >= X, or h >= X - q f. So an accepted candidate has f >= X ("strong" to the right), or h >= X - q (1 - q) X
// ("strong" to the left), or else both f and h of at least (1 - q) X ("weak"): for f below (1 - q) X the second case
// asks for a strong h, and for any f below X it asks for a weak one. With a smaller T, f or h is at least the smaller
// of X / (1 + q) and (1 + e) T / 2, and this takes the place of both strong thresholds. A larger e asks for more, but
// from about 2 on random sequence has paths of any value.
//
// Values are capped. That is sound: no threshold is above X. If (1 + e) F >= X, the candidate is kept for f. Else its
// paths never lose more than b + q X, so from a value capped at X + b + q X or more on its path the start still gets X.
// For the same reason that is high enough for what is not known where a stretch of the sequence ends. Distance 0, and
// distances that cost more insertions than a first copy can pay for, need not be followed. A low cap keeps fewer
// candidates beside perfect repeats, which is why the unit lengths tested in one run should be alike.
//
// Premises: g >= 5, m >= 5, e L - b > 0, T > 0. Cost: about a third of a nanosecond for a position and distance.
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

  static bool applies(const settings& s);

  // Tests all candidates of the sequence [sequence, sequence + length) for the lengths shortest .. longest, as many of
  // them, from the shortest on, as the memory for what is kept allows.
  void run(const char* sequence, std::size_t length, const settings& s);

  // Positions of one unit length: a list while they are few, else a bit for each position. Some come twice.
  class CPositions {
   public:
    // Returns by how many bytes the memory for it has grown.
    std::size_t add(std::size_t p, std::size_t length);
    void place(std::uint64_t* to) const;
    // Places those whose bit is set in `among`.
    void place_common(const std::uint64_t* among, std::uint64_t* to) const;
    std::size_t bytes() const { return list.size() * sizeof(std::uint32_t) + bits.size() * sizeof(std::uint64_t); }

   private:
    std::vector<std::uint32_t> list;
    std::vector<std::uint64_t> bits;
  };

  // What a run finds of one unit length.
  struct findings {
    CPositions strong;  // on either side
    CPositions weak_to_the_right;
    CPositions weak_to_the_left;
    std::size_t bytes() const { return strong.bytes() + weak_to_the_right.bytes() + weak_to_the_left.bytes(); }
  };

  // Whether the last run has tested this unit length.
  bool has(unsigned L) const { return L >= first_length && L - first_length < found.size(); }

  // Sets bit p % 64 of bits[p / 64] for the candidates of a tested unit length that may be accepted.
  void place(unsigned L, std::uint64_t* bits);

 private:
  unsigned first_length = 0;
  std::size_t its_length = 0;       // of the sequence
  std::vector<findings> found;      // by L - first_length
  std::vector<std::uint64_t> weak;  // scratch
};

#endif
