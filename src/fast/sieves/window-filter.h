#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "alignment-program.h"
#include "batch-bound.h"
#include "position-set.h"
#include "potential-filter.h"

// A bound for long units that serves many positions and unit lengths at once: chained window edit distances.
//
// It asks what the potential asks (potential-filter.h: read that first), of windows of 32 symbols instead of single
// ones. Let a path consume all of a window to the right of which it runs, against t symbols of text. With E edits it
// scores, counted in half points, at most
//   2 * 32 + (t - 32) - c E,   c = the smaller of 2 m + 2 and 2 g + 1,
// since each mismatch costs a match on both sides and each indel a match on one. E is at least the edit distance of the
// window to any stretch of text that ends where the path leaves it, which a bit vector finds for all distances in one
// scan of the text (Myers 1999, Hyyro 2003; free start), 32 symbols in a dozen operations. The smallest for 4 ends side
// by side is kept: a row.
//
// B(k, r) is the best value, 0 at least, of any path from the beginning of window k at a distance of row r, over whole
// windows, with a bonus for each of them; t - 32 is how far the path moves to larger distances, so it adds up to the
// rows between its ends, and to 3 more for places within the rows. A path may change rows in a window. By up to 4 rows
// that is left to the edit distance; going farther takes as many edits as it has distances, and is charged for them.
//
// Candidates are taken in blocks: those that begin in one window, with unit lengths of one row. In each copy of its
// unit such a candidate runs through the same whole windows; what lies in front of them and behind them, 32 to 63
// symbols, may match. The rest is as for the potential: entering copies in turn at the distances that the path can pay
// for, a block is dropped when its paths die before any gained enough. Leaving a copy with n whole windows, a path has
// gained at most B less n times the bonus; gaining z half points over whole windows it has consumed z / 64 of them or
// more, so z is at most B / (1 + bonus / 64). Two bonuses are followed side by side, and the lower bound of both
// counts.
//
// For example, L = T = 1000, penalties of 5 and the bonus of 56. A copy has 30 whole windows and 40 other symbols. On
// random sequence the smallest edit distances of windows are about 13, so that B is small, say 40, and a copy changes a
// path by at most 40 + 3 + 2 * 40 - 30 * 56 = -1557 half points. It may lose 2000: it dies in the second.
//
// What that keeps is followed forward, through the windows of a block in order, each path with its score by row: values
// say what is best from a row on wherever a path has come from, and there are many rows to enter a copy at. Here a path
// that changes its row also pays for the indels that this takes where the edit distance is less. Beside copies of
// interspersed repeats 5 to 40 times fewer are left then.
//
// To the left all is the mirror image: the same on the reversed record.
//
// Values are capped; what was capped keeps the candidate, as for the potential.
//
// Premises: penalties of 5 or more, T > 3, units of least_unit to longest_unit symbols. Cost: a fifth of the
// potential's. Of no use in satellites: a unit length is given up when many of its candidates are kept, all are where
// scores do not fit two bytes.
class CWindowFilter {
 public:
  using settings = CPotentialFilter::settings;

  static constexpr int window = 32;
  // Distances in a row, and unit lengths in a block.
  static constexpr int row = 4;
  static constexpr unsigned least_unit = 4 * window;
  // The memory for the edit distances of a copy, of all windows and rows, grows with the square of the unit.
  static constexpr unsigned longest_unit = 4000;

  // Whether the premises hold.
  static constexpr bool applies(unsigned L, int mismatch_penalty, int indel_penalty, int min_score) {
    return L >= least_unit && L <= longest_unit && mismatch_penalty >= 5 && indel_penalty >= 5 && min_score > 3;
  }

  // Whether a record is long enough for it to be worth its start.
  static bool pays(const alignment_bound& bound, std::size_t length);

  // Tests all candidates of the sequence [sequence, sequence + length) for the lengths shortest .. longest. The symbols
  // of `around` may be read; candidates in the sequence whose unit ends there too are tested as candidates of all of
  // these.
  void run(const char* sequence, std::size_t length, const settings& s) {
    run(sequence, length, s, {sequence, sequence + length});
  }
  void run(const char* sequence, std::size_t length, const settings& s, const symbol_range& around);

  // Whether run() was called.
  bool was_run() const { return !groups.empty(); }

  // Whether the unit length was tested and not given up.
  bool has(unsigned L) const;

  // Up to this unit length, or 0, so many candidates are kept, or so little is known, that another test is worth its
  // time.
  unsigned longest_with_many() const { return last_with_many; }

  // Whether a unit length beyond that was tested and not given up.
  bool are_few(unsigned L) const { return has(L) && L > longest_with_many(); }

  // Adds the candidates of such a unit length that may be accepted.
  void place(unsigned L, CPositionSet& kept) const;
  // Their words that are not 0, in front of an end, by number.
  std::map<std::size_t, std::uint64_t> words(unsigned L, std::size_t end) const;

  // What is kept of the unit lengths of one row, by the windows that the candidates begin in.
  struct group {
    std::vector<std::uint32_t> right;
    std::vector<std::uint32_t> left;  // of the reversed record
    bool is_given_up = false;
  };

 private:
  std::size_t length_read = 0;
  std::size_t front = 0;  // how many of the symbols read lie in front of the sequence
  unsigned shortest = 0;
  unsigned longest = 0;
  unsigned last_with_many = 0;
  std::vector<group> groups;  // from that of the shortest on

  unsigned find_last_with_many() const;
  template <typename Use>
  void for_each_range(unsigned L, std::size_t end, const Use& use) const;
};
