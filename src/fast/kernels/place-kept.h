#pragma once

#include <bit>
#include <cstdint>

#include "bit-planes.h"
#include "position-set.h"

// Adds the candidates that are kept at the plane vector of index t, `kept_words`. Few are, so each is placed on its
// own.
inline void place_kept(const std::uint64_t* kept_words, std::size_t t, const CBitPlanes& planes, CPositionSet& kept) {
  for (std::size_t w = 0; w < planes.words_in_use(); ++w) {
    for (std::uint64_t left = kept_words[w] & planes.lanes_in_use(w); left != 0; left &= left - 1) {
      const std::size_t lane = w * 64 + static_cast<std::size_t>(std::countr_zero(left));
      const std::size_t p = lane * planes.stretch() + t;
      if (p < planes.length()) kept.add(p);
    }
  }
}
