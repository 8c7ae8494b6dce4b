#ifndef QUARVO_TESTS_PLAIN_LOOK_AHEAD_H
#define QUARVO_TESTS_PLAIN_LOOK_AHEAD_H

// The look-ahead of the extension as it is defined: a recursion with three branches at every mismatch. Exponential.

#include <algorithm>
#include <cstdint>

#include "global-types-and-parameters.h"

// One side of a repeat to grow. Positions are counted from 0 at the repeat's end, in the direction of growth.
struct plain_side {
  const char* first;  // the symbol at position 0
  int step;           // 1 to the right, -1 to the left
  int symbols;        // up to the end of the sequence
  const char* unit_begin;
  int unit_length;

  char symbol(int position) const { return first[position * step]; }
  // The position in the unit one step behind u, in the direction of growth.
  int unit_step(int u) const { return (u + step + unit_length) % unit_length; }
  char unit_symbol(int u) const { return unit_begin[u]; }
};

inline int plain_look_ahead(const plain_side& side, int s, int u, int score, unsigned char depth, int best) {
  if (s == side.symbols) return score;
  for (;;) {
    if (side.symbol(s) == side.unit_symbol(u)) {
      ++score;
      ++s;
      u = side.unit_step(u);
    } else if (side.symbol(s) == 'N' && global_Ns_allowed_in_a_row != 0 && !global_treat_Ns_as_missense) {
      for (int chunk = 0;
           s != side.symbols && side.symbol(s) == 'N' && (chunk == 0 || chunk < global_Ns_allowed_in_a_row); ++chunk) {
        ++s;
        u = side.unit_step(u);
      }
    } else {
      break;
    }
    if (s == side.symbols) return score;
  }
  if (depth == global_maximum_recursion_depth) return score;
  best = std::max(best, score);
  const std::int64_t lower =
      std::max<std::int64_t>(std::int64_t{best} - global_maximum_scorereduction, -std::int64_t{side.unit_length}) -
      global_prefer_longer_repeat;
  const auto deeper = static_cast<unsigned char>(depth + 1);
  bool chosen = false;
  int value = -side.unit_length - 1;
  const auto consider = [&](int next_s, int next_u, int penalty) {
    const int v = plain_look_ahead(side, next_s, next_u, score + penalty, deeper, best);
    if (chosen && v <= value) return;
    value = v;
    chosen = true;
  };
  if (score + global_mismatch_score > lower) consider(s + 1, side.unit_step(u), global_mismatch_score);
  if (score + global_indel_score > lower) {
    consider(s + 1, u, global_indel_score);
    consider(s, side.unit_step(u), global_indel_score);
  }
  return chosen ? std::max(score, value) : score;
}

#endif
