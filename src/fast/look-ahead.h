#ifndef QUARVO_FAST_LOOK_AHEAD_H
#define QUARVO_FAST_LOOK_AHEAD_H

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "direction.h"

// The look-ahead of the imperfect extension: the highest score reachable from a state by perfect runs and single edits.
//
// Defined as a recursion with three branches per mismatch and a depth limit, it is computed here layer by layer: layer d
// holds the states after d edits, each moved to the end of its perfect run. Two states of a layer at one sequence
// position and unit cursor have the same continuations. Let a state's gap be the best score on its way minus its score.
// A state with no lower score and no larger gap than another may make every edit that the other may, all along every
// continuation: the admission test, score + penalty > max(best - reduction, -L) - P, asks for a small gap or a high
// score, and both orders are kept by runs and edits. Its scores there are no lower either, so the other state can be
// dropped without changing the maximum. With an unlimited reduction the gap never matters and each place keeps one state.
//
// Cost: with an unlimited reduction polynomial in the depth (a layer has at most one state for each diagonal and each
// mismatch on it). Memory is on the heap, so no depth overflows the stack. Running out of it is std::bad_alloc.

// What the value of a look-ahead depends on beside the state.
struct look_ahead_rules {
  int mismatch_score;
  int indel_score;
  int score_reduction;
  int prefer_longer;        // P, 0 or 1
  int recursion_depth;      // compared with the 8-bit depth for equality
  bool passes_over_Ns;
};

// The rules that the parameters give.
look_ahead_rules current_look_ahead_rules();

template <typename Direction>
class CLookAhead {
 public:
  // For extensions up to `end` (the position with nothing ahead) of the unit [unit_begin, unit_end).
  CLookAhead(const look_ahead_rules& its_rules, const char* its_end, const char* its_unit_begin,
             const char* its_unit_end)
      : rules(its_rules),
        end(its_end),
        unit_begin(its_unit_begin),
        unit_end(its_unit_end),
        unit_length(static_cast<int>(its_unit_end - its_unit_begin)) {}

  // The highest score reachable from position s with cursor u, score and depth, when best was met before.
  int value(const char* s, const char* u, int score, unsigned char depth, int best) {
    highest = std::numeric_limits<int>::min();
    next.clear();
    place(depth, {s, u, 0, score, best});
    while (!next.empty()) {
      std::swap(layer, next);
      next.clear();
      std::fill(newest_on_diagonal.begin(), newest_on_diagonal.end(), none);
      ++depth;
      for (const state& from : layer) place_edits(depth, from);
    }
    return highest;
  }

 private:
  struct state {
    const char* s;
    const char* u;
    int diagonal;  // unit symbols minus sequence symbols consumed by edits
    int score;
    int best;
    int older = none;  // the state placed before on the same diagonal
  };
  static constexpr int none = -1;

  look_ahead_rules rules;
  const char* end;
  const char* unit_begin;
  const char* unit_end;
  int unit_length;
  int highest = 0;
  std::vector<state>& layer = workspace().layer;
  std::vector<state>& next = workspace().next;
  std::vector<int>& newest_on_diagonal = workspace().newest_on_diagonal;

  struct buffers {
    std::vector<state> layer;
    std::vector<state> next;
    std::vector<int> newest_on_diagonal;  // of `next`; diagonals 0, -1, 1, -2, 2, ...
  };
  static buffers& workspace() {
    static buffers reused;
    return reused;
  }

  const char* unit_step(const char* u) const { return Direction::unit_step(u, unit_begin, unit_end); }

  // The three edits at the mismatch that the state stands at, as far as they are admissible.
  void place_edits(unsigned char depth, const state& from) {
    const std::int64_t bound = std::max<std::int64_t>(static_cast<std::int64_t>(from.best) - rules.score_reduction,
                                                      -static_cast<std::int64_t>(unit_length)) -
                               rules.prefer_longer;
    const char* const s = Direction::step(from.s);
    const char* const u = unit_step(from.u);
    if (static_cast<std::int64_t>(from.score) + rules.mismatch_score > bound) {
      place(depth, {s, u, from.diagonal, from.score + rules.mismatch_score, from.best});
    }
    if (static_cast<std::int64_t>(from.score) + rules.indel_score > bound) {
      const int score = from.score + rules.indel_score;
      place(depth, {s, from.u, from.diagonal - 1, score, from.best});
      place(depth, {from.s, u, from.diagonal + 1, score, from.best});
    }
  }

  // Moves the state to the end of its perfect run and, if edits may follow there, into the next layer.
  void place(unsigned char depth, state from) {
    while (from.s != end) {
      const char symbol = Direction::ahead(from.s);
      if (symbol == *from.u) {
        ++from.score;
      } else if (symbol != 'N' || !rules.passes_over_Ns) {
        break;
      }
      from.s = Direction::step(from.s);
      from.u = unit_step(from.u);
    }
    highest = std::max(highest, from.score);
    if (from.s == end || depth == rules.recursion_depth) return;
    from.best = std::max(from.best, from.score);
    merge(from);
  }

  static std::size_t index_of(int diagonal) {
    return static_cast<std::size_t>(diagonal < 0 ? -2 * diagonal - 1 : 2 * diagonal);
  }

  bool is_unlimited() const { return rules.score_reduction == std::numeric_limits<int>::max(); }

  bool dominates(const state& a, const state& b) const {
    if (a.score < b.score) return false;
    return is_unlimited() || static_cast<std::int64_t>(a.best) - a.score <= static_cast<std::int64_t>(b.best) - b.score;
  }

  // Adds the state to the next layer unless one at the same place dominates it; replaces one that it dominates.
  void merge(state& added) {
    const std::size_t diagonal = index_of(added.diagonal);
    if (diagonal >= newest_on_diagonal.size()) newest_on_diagonal.resize(diagonal + 1, none);
    for (int i = newest_on_diagonal[diagonal]; i != none; i = next[static_cast<std::size_t>(i)].older) {
      state& other = next[static_cast<std::size_t>(i)];
      if (other.s != added.s) continue;
      if (dominates(other, added)) return;
      if (dominates(added, other)) {
        other.score = added.score;
        other.best = added.best;
        return;
      }
    }
    added.older = newest_on_diagonal[diagonal];
    newest_on_diagonal[diagonal] = static_cast<int>(next.size());
    next.push_back(added);
  }
};

#endif
