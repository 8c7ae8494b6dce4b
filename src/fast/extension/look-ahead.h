#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "perfect-run.h"
#include "scoring.h"
#include "three-edits.h"
#include "unit-text.h"

// The look-ahead of the imperfect extension: the highest score reachable from a state by perfect runs and single edits.
//
// Defined as a recursion with up to three branches at each mismatch and a depth limit. Its value is the highest score
// at the end of any perfect run on any admissible path, so it can be computed by visiting the states in any order.
// Small trees, nearly all there are, are walked as defined. Larger ones are computed layer by layer: layer d holds the
// states after d edits, each moved to the end of its perfect run. Two states of a layer at one sequence position and
// unit cursor have the same continuations. Let a state's gap be the best score on its way minus its score. A state with
// no lower score and no larger gap than another may make every edit that the other may, all along every continuation:
// the admission test, score + penalty > max(best - reduction, -L) - P, asks for a small gap or a high score, and both
// orders are kept by runs and edits. Its scores there are no lower either, so the other state can be dropped without
// changing the maximum. With an unlimited reduction the gap never matters and each place keeps one state.
//
// Cost: a constant number of steps for small trees; with an unlimited reduction polynomial in the depth (a layer has at
// most one state for each diagonal and each mismatch on it). Memory is on the heap and the walk is bounded, so no depth
// overflows the stack. Running out of memory is std::bad_alloc.

// The layers of a look-ahead, kept for their memory by whoever asks for many.
struct look_ahead_workspace {
  static constexpr int none = -1;
  struct state {
    extension_state at;
    int diagonal;  // unit symbols minus sequence symbols consumed by edits
    int best;
    int older = none;  // the state placed before on the same diagonal
  };
  std::vector<state> layer;
  std::vector<state> next;
  std::vector<int> newest_on_diagonal;  // of `next`; diagonals 0, -1, 1, -2, 2, ...
};

template <typename Direction>
class CLookAhead {
 public:
  // For extensions of the unit up to `end` (the position with nothing ahead). The unit must stay as it is.
  CLookAhead(const scoring& its_rules, const CUnitText& its_unit, const char* its_end,
             look_ahead_workspace& its_workspace)
      : rules(its_rules), unit(its_unit), end(its_end), workspace(its_workspace) {}

  // The highest score reachable from the state, at this depth, when best was met before.
  int value(const extension_state& from, unsigned char depth, int best) {
    highest = std::numeric_limits<int>::min();
    visits_left = most_visits;
    visit(from, depth, best);
    return visits_left >= 0 ? highest : value_by_layers(from, depth, best);
  }

 private:
  // Trees of up to this many states are walked.
  static constexpr int most_visits = 200;

  using state = look_ahead_workspace::state;
  static constexpr int none = look_ahead_workspace::none;

  scoring rules;
  const CUnitText& unit;
  const char* end;
  int highest = 0;
  int visits_left = 0;

  look_ahead_workspace& workspace;

  // The defined recursion. Gives up when the tree is too large.
  void visit(extension_state at, unsigned char depth, int best) {
    if (--visits_left < 0) return;
    run_on<Direction>(at, unit, end, rules.passes_over_Ns);
    highest = std::max(highest, at.score);
    if (at.s == end || depth == rules.recursion_depth) return;
    best = std::max(best, at.score);
    ++depth;
    each_edit<Direction>(at, rules, unit.length(), rules.least_after_edit(best, unit.length()),
                         [&](edit, const extension_state& after) { visit(after, depth, best); });
  }

  int value_by_layers(const extension_state& from, unsigned char depth, int best) {
    std::vector<state>& layer = workspace.layer;
    std::vector<state>& next = workspace.next;
    std::vector<int>& newest = workspace.newest_on_diagonal;
    highest = std::numeric_limits<int>::min();
    next.clear();
    std::fill(newest.begin(), newest.end(), none);
    place(depth, {from, 0, best});
    while (!next.empty()) {
      std::swap(layer, next);
      next.clear();
      std::fill(newest.begin(), newest.end(), none);
      ++depth;
      for (const state& s : layer) place_edits(depth, s);
    }
    return highest;
  }

  // The three edits at the mismatch that the state stands at, as far as they are admissible.
  void place_edits(unsigned char depth, const state& from) {
    const auto diagonal_after = [&from](edit made) {
      return from.diagonal + (made == edit::deletion ? 1 : made == edit::insertion ? -1 : 0);
    };
    each_edit<Direction>(from.at, rules, unit.length(), rules.least_after_edit(from.best, unit.length()),
                         [&](edit made, const extension_state& after) {
                           place(depth, {after, diagonal_after(made), from.best});
                         });
  }

  // Moves the state to the end of its perfect run and, if edits may follow there, into the next layer.
  void place(unsigned char depth, state from) {
    run_on<Direction>(from.at, unit, end, rules.passes_over_Ns);
    highest = std::max(highest, from.at.score);
    if (from.at.s == end || depth == rules.recursion_depth) return;
    from.best = std::max(from.best, from.at.score);
    merge(from);
  }

  static std::size_t index_of(int diagonal) {
    return static_cast<std::size_t>(diagonal < 0 ? -2 * diagonal - 1 : 2 * diagonal);
  }

  bool dominates(const state& a, const state& b) const {
    if (a.at.score < b.at.score) return false;
    return rules.is_unlimited() ||
           static_cast<std::int64_t>(a.best) - a.at.score <= static_cast<std::int64_t>(b.best) - b.at.score;
  }

  // Adds the state to the next layer unless one at the same place dominates it; replaces one that it dominates.
  void merge(state& added) {
    std::vector<state>& next = workspace.next;
    std::vector<int>& newest = workspace.newest_on_diagonal;
    const std::size_t diagonal = index_of(added.diagonal);
    if (diagonal >= newest.size()) newest.resize(diagonal + 1, none);
    for (int i = newest[diagonal]; i != none; i = next[static_cast<std::size_t>(i)].older) {
      state& other = next[static_cast<std::size_t>(i)];
      if (other.at.s != added.at.s) continue;
      if (dominates(other, added)) return;
      if (dominates(added, other)) {
        other.at.score = added.at.score;
        other.best = added.best;
        return;
      }
    }
    added.older = newest[diagonal];
    newest[diagonal] = static_cast<int>(next.size());
    next.push_back(added);
  }
};
