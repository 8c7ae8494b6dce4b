#pragma once

#include "direction.h"
#include "extension-state.h"
#include "unit-text.h"

// Moves the state over matches and, where they are passed over, N's. Stops at the end or in front of a mismatch.
template <typename Direction>
inline void run_on(extension_state& at, const CUnitText& unit, const char* end, bool passes_over_Ns) {
  const int L = unit.length();
  for (;;) {
    while (Direction::left_over(at.s, end) >= symbols_a_word) {
      const int matches = Direction::matches_of_word(at.s, unit.begin(), at.u);
      at.score += matches;
      at.s = Direction::steps(at.s, matches);
      at.u = unit.wrapped(Direction::unit_steps(at.u, matches));
      if (matches != symbols_a_word) break;
    }
    while (at.s != end && Direction::ahead(at.s) == unit.begin()[at.u]) {
      ++at.score;
      at.s = Direction::step(at.s);
      at.u = Direction::unit_step(at.u, L);
    }
    if (!passes_over_Ns || at.s == end || Direction::ahead(at.s) != 'N') return;
    while (at.s != end && Direction::ahead(at.s) == 'N') {
      at.s = Direction::step(at.s);
      at.u = Direction::unit_step(at.u, L);
    }
  }
}
