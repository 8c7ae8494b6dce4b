#pragma once

#include <cstddef>

#include "Csat.h"

// The seed extended last. The starts inside a seed that is not covered give it again and again, each time with another
// rotation of its unit, and follow each other in the sorted list. An extension depends on the unit only as a cycle, so
// all of them end as the first did.
class CLastSeed {
 public:
  // Remembers a seed that is about to be extended.
  void set(const Csat& seed) {
    left = seed.pos_left;
    right = seed.pos_right;
    L = seed.unit_length();
  }

  // Whether the seed has the ends and the unit length of the one remembered.
  bool is_like(const Csat& seed) const {
    return seed.pos_left == left && seed.pos_right == right && seed.unit_length() == L;
  }

  // Gives a seed like it what the extension made of it. The cursors are the same symbols of the cycle.
  static void copy_extension(const Csat& extended, Csat& seed) {
    const std::ptrdiff_t L = seed.unit_length();
    const std::ptrdiff_t rotation = seed.unit_begin - extended.unit_begin;
    const auto rotated = [&](const char* cursor) {
      const std::ptrdiff_t u = (cursor - extended.unit_begin - rotation) % L;
      return seed.unit_begin + (u < 0 ? u + L : u);
    };
    seed.pos_left = extended.pos_left;
    seed.pos_right = extended.pos_right;
    seed.fwd_unit_cursor = rotated(extended.fwd_unit_cursor);
    seed.bwd_unit_cursor = rotated(extended.bwd_unit_cursor);
    seed.score = extended.score;
    seed.mismatches = extended.mismatches;
    seed.insertions = extended.insertions;
    seed.deletions = extended.deletions;
    seed.number_of_Ns = extended.number_of_Ns;
    for (const auto& entry : extended.missense_entries()) seed.add_missense(entry.position, entry.symbol);
  }

 private:
  const char* left = nullptr;
  const char* right = nullptr;
  int L = 0;
};
