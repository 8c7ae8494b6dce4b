#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

// How an extension is scored and where it stops: all that it depends on beside the sequence and the unit. A match is
// worth 1.
struct scoring {
  int mismatch_score;   // negative
  int indel_score;      // negative
  int score_reduction;  // how far below the best score an edit may lead
  int prefer_longer;    // P, 0 or 1
  int recursion_depth;  // compared with the 8-bit depth for equality
  bool passes_over_Ns;  // for a score of 0; else an N is a symbol that matches nothing
  int Ns_in_a_row;      // the longest run of N's that an extension passes over

  bool is_unlimited() const { return score_reduction == std::numeric_limits<int>::max(); }

  // The least score that an edit may leave behind, for unit length L, when best was met on the way.
  std::int64_t least_after_edit(int best, int L) const {
    const std::int64_t reduced = static_cast<std::int64_t>(best) - score_reduction;
    return std::max(reduced - prefer_longer + 1, least_after_edit(L));
  }

  // The floor: the least score that any edit may leave behind, whatever came before.
  std::int64_t least_after_edit(int L) const { return -static_cast<std::int64_t>(L) - prefer_longer + 1; }
};
