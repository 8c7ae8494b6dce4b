#pragma once

#include <cstdint>

#include "edit.h"
#include "extension-state.h"
#include "scoring.h"

// Follows the edits at a mismatch that leave a score of at least `least`: a mismatch, an insertion, a deletion, in this
// order. follow(edit, state after it) says whether that is enough; any_edit then says so at once.
template <typename Direction, typename Follow>
inline bool any_edit(const extension_state& at, const scoring& rules, int unit_length, std::int64_t least,
                     Follow follow) {
  const char* const s = Direction::step(at.s);
  const int u = Direction::unit_step(at.u, unit_length);
  const auto leaves_enough = [&](int penalty) { return static_cast<std::int64_t>(at.score) + penalty >= least; };
  if (leaves_enough(rules.mismatch_score)) {
    if (follow(edit::mismatch, extension_state{s, u, at.score + rules.mismatch_score})) return true;
  }
  if (!leaves_enough(rules.indel_score)) return false;
  return follow(edit::insertion, extension_state{s, at.u, at.score + rules.indel_score}) ||
         follow(edit::deletion, extension_state{at.s, u, at.score + rules.indel_score});
}

// The same, to the end.
template <typename Direction, typename Follow>
inline void each_edit(const extension_state& at, const scoring& rules, int unit_length, std::int64_t least,
                      Follow follow) {
  any_edit<Direction>(at, rules, unit_length, least, [&](edit made, const extension_state& after) {
    follow(made, after);
    return false;
  });
}
