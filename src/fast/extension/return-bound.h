#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

#include "look-ahead.h"
#include "unit-text.h"

// What return_bound_allows() is asked. Scores are counted from the floor: 0 is a score that no edit may leave behind, 1
// the least that one may.
struct return_question {
  const char* ahead;  // the symbol ahead, which does not fit the unit
  int step;           // from one symbol to the next, 1 or -1
  std::ptrdiff_t symbols;
  const std::uint8_t* unit;  // in the direction of the extension; whole blocks of return_bound_block can be read
  int unit_length;
  int cursor;  // the place in `unit` that comes next
  int mismatch_penalty;
  int indel_penalty;
  bool passes_over_Ns;
  int score;
  int needed;
};

inline constexpr int return_bound_block = 16;

// Whether, after at least one edit, a path may have the needed score, of at most 255.
bool return_bound_allows(const return_question& question);

// Whether an extension that has left its best end behind can come back to what it needs to keep more than that end.
//
// Contract: may_return is true whenever, after one edit or more, some path of the extension has a score of at least
// `needed`. False ends it: whatever edits it chooses, it returns to its best end.
//
// Argument. All paths are followed, symbol by symbol, that match, mismatch, insert or delete wherever they like and
// stay above the floor by each edit; of those that stand at one place of the unit only the highest score counts. The
// paths of an extension are among them. When all are dead, or the record ends, none has come back.
//
// Holds for every depth and score reduction, which only restrict the paths. Gives up, and answers true, on long units,
// high scores, and where paths live on for long.
//
// Cost: some twenty operations on 16 unit symbols for each symbol ahead, about as many as the score lies above the
// floor.
class CReturnBound {
 public:
  static constexpr int longest_unit = 128;
  static constexpr int highest_score = 255;

  template <typename Direction>
  bool may_return(const extension_state& from, const CUnitText& unit, const char* end, const scoring& rules,
                  int needed) {
    constexpr bool is_left = std::is_same_v<Direction, leftwards>;
    const int L = unit.length();
    const std::int64_t floor = rules.least_after_edit(L) - 1;
    const std::int64_t highest = static_cast<std::int64_t>(std::max(from.score, needed)) - floor;
    if (L > longest_unit || highest > highest_score || needed <= floor) return true;
    if (is_left) {
      std::reverse_copy(unit.begin(), unit.begin() + L, symbols.begin());
    } else {
      std::copy(unit.begin(), unit.begin() + L, symbols.begin());
    }
    return return_bound_allows({is_left ? from.s - 1 : from.s, is_left ? -1 : 1, Direction::left_over(from.s, end),
                                symbols.data(), L, is_left ? L - 1 - from.u : from.u, penalty(rules.mismatch_score),
                                penalty(rules.indel_score), rules.passes_over_Ns, static_cast<int>(from.score - floor),
                                static_cast<int>(needed - floor)});
  }

 private:
  // A penalty beyond the highest score ends a path as that score does.
  static int penalty(int score) { return score < -highest_score ? highest_score : -score; }

  std::array<std::uint8_t, longest_unit> symbols{};
};
