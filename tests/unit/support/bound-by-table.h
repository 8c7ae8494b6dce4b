#pragma once

// The bound that the filters of imperfect mode rest on, as it is stated: the best score over all alignment paths that
// match whenever they can, edit only at mismatches, are at -b or above after every edit and pass over neutral N's for
// nothing, from 0 to the right and then to the left from what that gave. A dynamic programme over sequence symbols and
// diagonals, byte by byte.

#include <algorithm>
#include <limits>
#include <vector>

#include "alignment-program.h"

// One side of a repeat to grow. Positions are counted from 0 at the repeat's end, in the direction of growth.
struct repeat_side {
  const char* first;  // the symbol at position 0
  int step;           // 1 to the right, -1 to the left
  int symbols;        // up to the end of the sequence
  const char* unit_begin;
  int unit_length;

  char symbol(int position) const { return first[position * step]; }
  // The position in the unit one step after u, in the direction of growth.
  int unit_step(int u) const {
    const int after = u + step;
    if (after < 0) return unit_length - 1;
    return after == unit_length ? 0 : after;
  }
  char unit_symbol(int u) const { return unit_begin[u]; }
};

class CBoundByTable {
 public:
  CBoundByTable(const alignment_bound& its_bound, bool are_Ns_neutral)
      : bound(its_bound), Ns_are_neutral(are_Ns_neutral) {}

  // The bound of the candidate unit at `p` of the symbols [begin, end), or T as soon as it is known to be no less.
  int score(const char* begin, const char* end, const char* p) {
    const int L = static_cast<int>(bound.L);
    const repeat_side right{p + L, 1, static_cast<int>(end - p) - L, p, L};
    const repeat_side left{p - 1, -1, static_cast<int>(p - begin), p, L};
    const int to_right = best_of(right, 0, 0);
    return to_right >= bound.T ? bound.T : best_of(left, L - 1, to_right);
  }

  bool reaches(const char* begin, const char* end, const char* p) { return score(begin, end, p) >= bound.T; }

 private:
  static constexpr int dead = std::numeric_limits<int>::min();

  alignment_bound bound;
  bool Ns_are_neutral;
  // The best score of a path, by diagonal (unit symbols minus sequence symbols consumed) from `lowest` on: before and
  // after the symbol in hand.
  std::vector<int> now;
  std::vector<int> next;
  int lowest = 0;

  static void raise(int& best, int score) { best = std::max(best, score); }

  int best_of(const repeat_side& side, int first_u, int start) {
    int best = start;
    now.assign(1, start);
    lowest = 0;
    for (int i = 0; i < side.symbols && !now.empty(); ++i) {
      take(side.symbol(i), side, first_u, i);
      best = std::max(best, *std::max_element(next.begin(), next.end()));
      if (best >= bound.T) return bound.T;
      keep_alive();
    }
    return best;
  }

  // `next` begins one diagonal lower, since an insertion leads there. A deletion leads to the next diagonal of `now`.
  void take(char symbol, const repeat_side& side, int first_u, int i) {
    next.assign(now.size() + 1, dead);
    int u = unit_position(side, first_u, i + lowest);
    for (std::size_t k = 0; k < now.size(); ++k, u = side.unit_step(u)) {
      const int score = now[k];
      if (score == dead) continue;
      if (symbol == side.unit_symbol(u)) {
        raise(next[k + 1], score + 1);
      } else if (symbol == 'N' && Ns_are_neutral) {
        raise(next[k + 1], score);
      } else {
        edit(k, score);
      }
    }
  }

  void edit(std::size_t k, int score) {
    const int after_mismatch = score - bound.mismatch_penalty;
    const int after_indel = score - bound.indel_penalty;
    if (after_mismatch >= -bound.b) raise(next[k + 1], after_mismatch);
    if (after_indel < -bound.b) return;
    raise(next[k], after_indel);
    if (k + 1 == now.size()) {
      now.push_back(dead);
      next.push_back(dead);
    }
    raise(now[k + 1], after_indel);
  }

  static int unit_position(const repeat_side& side, int first_u, int consumed) {
    const int L = side.unit_length;
    return ((first_u + side.step * consumed) % L + L) % L;
  }

  void keep_alive() {
    std::size_t begin = 0;
    std::size_t end = next.size();
    while (begin != end && next[begin] == dead) ++begin;
    while (begin != end && next[end - 1] == dead) --end;
    now.assign(next.begin() + static_cast<std::ptrdiff_t>(begin), next.begin() + static_cast<std::ptrdiff_t>(end));
    lowest += static_cast<int>(begin) - 1;
  }
};
