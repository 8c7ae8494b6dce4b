#pragma once

#include <algorithm>

#include "edit.h"
#include "perfect-run.h"
#include "scoring.h"
#include "three-edits.h"
#include "unit-text.h"

// The look-ahead of the extension, as it is defined: the highest score reachable from a state by runs of matches and
// single edits at mismatches.
//
// After a run, in which neutral N's are passed over however many they are, an edit is admissible if it leaves the least
// score of the scoring or more; each admissible one is followed, up to a number of edits. Time grows with three to the
// power of that number.
template <typename Direction>
int leap_ahead(extension_state at, unsigned char depth, int best, const scoring& rules, const CUnitText& unit,
               const char* end) {
  run_on<Direction>(at, unit, end, rules.passes_over_Ns);
  int highest = at.score;
  if (at.s == end || depth == rules.recursion_depth) return highest;
  best = std::max(best, at.score);
  ++depth;
  each_edit<Direction>(at, rules, unit.length(), rules.least_after_edit(best, unit.length()),
                       [&](edit, const extension_state& after) {
                         highest = std::max(highest, leap_ahead<Direction>(after, depth, best, rules, unit, end));
                       });
  return highest;
}

// The edit with the highest look-ahead at a mismatch, where the best score on the way was `best`; of equals a mismatch,
// then an insertion. `none` when no edit is admissible. look_ahead(state) is the value of the state after an edit.
template <typename Direction, typename LookAhead>
edit best_edit(const extension_state& at, int best, const scoring& rules, int unit_length, LookAhead look_ahead) {
  edit chosen = edit::none;
  int chosen_value = 0;
  each_edit<Direction>(at, rules, unit_length, rules.least_after_edit(best, unit_length),
                       [&](edit made, const extension_state& after) {
                         const int value = look_ahead(after);
                         if (chosen != edit::none && value <= chosen_value) return;
                         chosen = made;
                         chosen_value = value;
                       });
  return chosen;
}
