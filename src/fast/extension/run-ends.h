#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "edit-outlook.h"
#include "look-ahead.h"
#include "run-end-sets.h"
#include "symbols-ahead.h"

// The choice of an edit, from the sets of all places at which a look-ahead can stand, one bit a place.
//
// Idea. After e edits, D of them deletions and I insertions, a look-ahead stands on the diagonal D - I, and its score
// is that of the mismatch it began at, plus the symbols consumed, plus a number that e, D and I fix:
//   (e - D - I) (mismatch - 1) + I (insertion - 1) + D deletion.
// So the edits made may be counted in place of the score, and of all paths with the same counts it matters only where
// they stand. That is one word for each triple of counts, bit i for the i-th symbol ahead. What the paths do is done to
// all bits of a word at once:
// - a mismatch or an insertion shifts the word by one, a deletion leaves it where it is;
// - the runs after it: added to the word of the matching symbols, each bit carries to the first mismatch after it;
// - an edit is admissible from a score on, which is an offset for each triple: a mask.
// The highest score is that of the highest bit of some word. From there the words are followed back to the first edit.
// All is exact: sets hold no place that a look-ahead does not reach, and lack none.
//
// For example, the first edit, at the mismatch that is the symbol at offset 0, with the unit ACGTT at its last symbol
// and penalties of 5. Of 64 bits 8 are shown, in the order of offsets, so that a carry goes to the right:
//
//                    mismatch (0, 0)    insertion (0, 1)   deletion (1, 0)     counts as (D, I)
//   symbols          A C G T C A C G    A C G T C A C G    A C G T C A C G
//   unit             T A C G T T A C    T T A C G T T A    A C G T T A C G     on the diagonals 0, -1 and +1
//   equal            0 0 0 0 0 0 0 0    0 0 0 0 0 0 0 0    1 1 1 1 0 1 1 1
//   starts           0 1 0 0 0 0 0 0    0 1 0 0 0 0 0 0    1 0 0 0 0 0 0 0     shifted, shifted, not shifted
//   carried          0 0 0 0 0 0 0 0    0 0 0 0 0 0 0 0    0 0 0 0 1 1 1 1     equal + (starts & equal)
//   ends of runs     0 1 0 0 0 0 0 0    0 1 0 0 0 0 0 0    0 0 0 0 1 0 0 0     (carried | starts) & ~equal
//   score            1 - 6 = -5         1 - 6 = -5         4 - 5 = -1          offset less what the edits lost
//
// At a depth of 1 the deletion is chosen. A second edit leads from those of these places where it is admissible to the
// words of (0, 0), (0, 1), (0, 2), (1, 0), (1, 1) and (2, 0); that of (1, 1) is reached from (0, 1) and from (1, 0).
//
// Premises: the score reduction is unlimited (the floor is the same everywhere), at most most_edits edits a look-ahead,
// penalties of up to most_penalty. The scores of mismatches and indels may differ. A path that leaves the 64 symbols
// ahead, or comes to an N that is passed over, leaves what is known here, and there is no answer. The end of the record
// is known.
//
// Cost: (R + 1) (R + 2) (R + 3) / 6 words for R edits, 55 for 5, with some ten operations each; run-end-sets.h makes up
// to 8 of them at once.
class CRunEnds {
 public:
  static constexpr int most_edits = run_end_sets::most_edits;
  static constexpr int most_penalty = 60;
  static constexpr int symbols = CSymbolsAhead::size;

  // For look-aheads by these rules with units of this length.
  void set(const scoring& rules, int unit_length);

  // Whether the premises hold.
  bool applies() const { return is_applied; }

  // How far off the diagonals lie that are asked for.
  int radius() const { return depth; }

  // The choice at a mismatch reached with `score`. Returns false when a path leaves what is known.
  //
  // Where all paths end below `needed`, with no other edit admissible after them, the edit that it finds is any one.
  bool choose(const CSymbolsAhead& ahead, int score, int needed);

  // What it found.
  const edit_outlook& outlook() const { return found; }

  // How many symbols ahead of the mismatch a path of it stood at a mismatch, or at the end, where the floor stopped
  // none.
  int farthest() const;

 private:
  static constexpr int row = run_end_sets::row;
  static constexpr int guard = run_end_sets::guard;
  static constexpr std::size_t index(int deletions, int insertions) {
    return run_end_sets::index(deletions, insertions);
  }
  // Counts as bits of a word, of which those of one layer make a set.
  static constexpr std::uint64_t bit_of(std::size_t cell) { return std::uint64_t{1} << (cell - guard); }

  int depth = 0;
  bool is_applied = false;
  int mismatch_score = 0;
  int indel_score = 0;
  std::int64_t least_for_mismatch = 0;  // the score that an edit needs before it
  std::int64_t least_for_indel = 0;

  run_end_sets sets;
  run_end_sets::layers<std::uint64_t> wanted{};  // those on the way to the highest score; 0 between two choices

  int last_layer = 0;     // of the choice
  int highest_value = 0;  // counted from the score at the mismatch
  edit_outlook found{};

  bool has_one_penalty() const { return mismatch_score == indel_score; }
  int cheaper_score() const;
  void set_losses();
  std::uint64_t highest_ends(int edits, std::size_t cell) const;
  std::uint64_t cells_with_highest(int edits) const;
  std::uint64_t follow_back(const run_end_question& asked, int edits, std::size_t cell);
  edit first_edit(const run_end_question& asked, int edits);
};
