#ifndef QUARVO_LEAP_AHEAD_H
#define QUARVO_LEAP_AHEAD_H

#include <algorithm>
#include <cstdint>

#include "edit.h"
#include "perfect-run.h"
#include "scoring.h"
#include "unit-text.h"

// The look-ahead of the extension, as it is defined: the highest score reachable from a state by runs of matches and
// single edits at mismatches.
//
// After a run an edit is admissible if the score that it leaves is above the bound of the scoring; each admissible one
// is followed, up to a number of edits. Time grows with three to the power of that number.
template <typename Direction>
int leap_ahead(extension_state at, unsigned char depth, int best, const scoring& rules, const CUnitText& unit,
               const char* end) {
  run_on<Direction>(at, unit, end, rules.passes_over_Ns);
  int highest = at.score;
  if (at.s == end || depth == rules.recursion_depth) return highest;
  best = std::max(best, at.score);
  const std::int64_t bound = rules.bound(best, unit.length());
  ++depth;
  const auto follow = [&](const char* s, int u, int penalty) {
    highest = std::max(highest, leap_ahead<Direction>({s, u, at.score + penalty}, depth, best, rules, unit, end));
  };
  const char* const s = Direction::step(at.s);
  const int u = Direction::unit_step(at.u, unit.length());
  if (static_cast<std::int64_t>(at.score) + rules.mismatch_score > bound) follow(s, u, rules.mismatch_score);
  if (static_cast<std::int64_t>(at.score) + rules.indel_score > bound) {
    follow(s, at.u, rules.indel_score);
    follow(at.s, u, rules.indel_score);
  }
  return highest;
}

// The edit with the highest look-ahead at a mismatch, where the best score on the way was `best`; of equals a mismatch,
// then an insertion. `none` when no edit is admissible. look_ahead(state) is the value of the state behind an edit.
template <typename Direction, typename LookAhead>
edit best_edit(const extension_state& at, int best, const scoring& rules, int unit_length, LookAhead look_ahead) {
  const std::int64_t bound = rules.bound(best, unit_length);
  const char* const s = Direction::step(at.s);
  const int u = Direction::unit_step(at.u, unit_length);
  edit chosen = edit::none;
  int chosen_value = 0;
  const auto consider = [&](edit candidate, const extension_state& behind) {
    const int value = look_ahead(behind);
    if (chosen != edit::none && value <= chosen_value) return;
    chosen = candidate;
    chosen_value = value;
  };
  if (static_cast<std::int64_t>(at.score) + rules.mismatch_score > bound) {
    consider(edit::mismatch, {s, u, at.score + rules.mismatch_score});
  }
  if (static_cast<std::int64_t>(at.score) + rules.indel_score > bound) {
    consider(edit::insertion, {s, at.u, at.score + rules.indel_score});
    consider(edit::deletion, {at.s, u, at.score + rules.indel_score});
  }
  return chosen;
}

#endif
