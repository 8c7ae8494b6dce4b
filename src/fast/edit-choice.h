#ifndef QUARVO_FAST_EDIT_CHOICE_H
#define QUARVO_FAST_EDIT_CHOICE_H

#include <algorithm>
#include <limits>
#include <vector>

#include "look-ahead.h"

// Which edit an extension makes at a mismatch, found in one pass instead of one look-ahead for each alternative.
//
// Premise: the score reduction is unlimited, so an edit is admissible when the score after it is above -L - P, whatever
// came before. Then of two states at one position, unit cursor and depth the one with the higher score can do all that
// the other can, and better. So the look-aheads of the three edits run as one, layer by layer, and each place keeps its
// highest score, marked with the edit that the path to it began with; of equal scores the mark of the edit preferred at
// equal values (mismatch, insertion, deletion). The mark at the highest score of all is the choice: let v be the
// highest value of the three edits and e the preferred edit among those that reach it, and follow a path of e to v. A
// place of it held by a higher score would lead above v, and one held by an equal score with a preferred mark would let
// that edit reach v; neither can be.
//
// The same pass tells when an extension has no future: when no edit is admissible any more before the recursion depth
// is used up, it has followed all paths there are, and that of the extension is among them.
//
// A state with fewer edits can do what one with more edits can, so places are shared with the layers before, too.
//
// Cost: little more than 2 d + 1 states after d edits, instead of 3^d.

enum class edit : unsigned char { mismatch, insertion, deletion, none };

template <typename Direction>
class CEditChoice {
 public:
  CEditChoice(const look_ahead_rules& its_rules, const CUnitText& its_unit, const char* its_end)
      : rules(its_rules), unit(its_unit), end(its_end), space(workspace()) {
    const std::int64_t lowest = rules.bound(0, its_unit.length()) + 1;
    least_for_mismatch = at_least(lowest - rules.mismatch_score);
    least_for_indel = at_least(lowest - rules.indel_score);
    least_for_any = std::min(least_for_mismatch, least_for_indel);
  }

  // The choice at a mismatch reached after `depth` edits of the look-ahead. `none` when no edit is admissible, or when
  // no path of any number of edits leads to a score of `needed`; is_hopeless() tells the second case.
  edit choose(const extension_state& from, unsigned char depth, int needed) {
    highest = std::numeric_limits<int>::min();
    chosen = edit::none;
    hopeless = false;
    space.states.clear();
    space.newest.clear();
    space.states.push_back({from, 0, edit::none, no_state});
    layer_begin = 0;
    is_cut = false;
    do {
      ++depth;
      is_last = depth == rules.recursion_depth;
      place_layer();
    } while (layer_begin != space.states.size());
    if (highest >= needed || is_cut || chosen == edit::none) return chosen;
    hopeless = true;
    return edit::none;
  }

  bool is_hopeless() const { return hopeless; }

 private:
  struct state {
    extension_state at;
    int diagonal;  // unit symbols minus sequence symbols consumed by edits
    edit first;
    int older;  // the state placed before on the same diagonal
  };
  static constexpr int no_state = -1;

  struct buffers {
    std::vector<state> states;  // of all layers
    std::vector<int> newest;    // on each diagonal, in the order 0, -1, 1, -2, 2, ...
  };
  static buffers& workspace() {
    static buffers reused;
    return reused;
  }

  look_ahead_rules rules;
  const CUnitText& unit;
  const char* end;
  buffers& space;
  int least_for_mismatch;  // the score that an edit needs before it
  int least_for_indel;
  int least_for_any;
  int highest = 0;
  edit chosen = edit::none;
  bool hopeless = false;
  bool is_last = false;         // no edit of the look-ahead may follow those of this layer
  bool is_cut = false;          // one would be admissible
  std::size_t layer_begin = 0;  // the layer being left is states [layer_begin, layer_end)
  std::size_t layer_end = 0;

  static int at_least(std::int64_t score) {
    return static_cast<int>(std::min<std::int64_t>(score, std::numeric_limits<int>::max()));
  }

  static edit mark(const state& from, edit made) { return from.first == edit::none ? made : from.first; }

  // Makes the next layer behind this one.
  void place_layer() {
    layer_end = space.states.size();
    for (std::size_t i = layer_begin; i != layer_end; ++i) {
      const state from = space.states[i];
      place_edits(from);
    }
    layer_begin = layer_end;
  }

  void place_edits(const state& from) {
    const extension_state& at = from.at;
    const char* const s = Direction::step(at.s);
    const int u = Direction::unit_step(at.u, unit.length());
    if (is_last && Direction::left_over(at.s, end) > symbols_a_word) {
      place_last_edits(from, s, u);
      return;
    }
    if (at.score >= least_for_mismatch) {
      place({{s, u, at.score + rules.mismatch_score}, from.diagonal, mark(from, edit::mismatch), no_state});
    }
    if (at.score >= least_for_indel) {
      const int score = at.score + rules.indel_score;
      place({{s, at.u, score}, from.diagonal - 1, mark(from, edit::insertion), no_state});
      place({{at.s, u, score}, from.diagonal + 1, mark(from, edit::deletion), no_state});
    }
  }

  // The same at the recursion depth, where most states are and only their scores count.
  void place_last_edits(const state& from, const char* s, int u) {
    const extension_state& at = from.at;
    if (at.score >= least_for_mismatch) {
      place_last({s, u, at.score + rules.mismatch_score}, mark(from, edit::mismatch));
    }
    if (at.score >= least_for_indel) {
      const int score = at.score + rules.indel_score;
      place_last({s, at.u, score}, mark(from, edit::insertion));
      place_last({at.s, u, score}, mark(from, edit::deletion));
    }
  }

  void place_last(const extension_state& at, edit first) {
    const int matches = Direction::matches_of_word(at.s, unit.begin(), at.u);
    if (matches == symbols_a_word || Direction::ahead(Direction::steps(at.s, matches)) == 'N') {
      place({at, 0, first, no_state});
      return;
    }
    note(at.score + matches, first);
    is_cut |= at.score + matches >= least_for_any;
  }

  void note(int score, edit first) {
    if (score < highest || (score == highest && first >= chosen)) return;
    highest = score;
    chosen = first;
  }

  // Moves the state to the end of its perfect run and, if edits may follow there, into the next layer.
  void place(state added) {
    run_on<Direction>(added.at, unit, end, rules.passes_over_Ns);
    const int score = added.at.score;
    note(score, added.first);
    if (added.at.s == end || score < least_for_any) return;
    if (is_last) {
      is_cut = true;
    } else {
      merge(added);
    }
  }

  static std::size_t index_of(int diagonal) {
    return static_cast<std::size_t>(diagonal < 0 ? -2 * diagonal - 1 : 2 * diagonal);
  }

  // Adds the state unless one at its place, in this layer or with fewer edits in one before, can do as well.
  void merge(state& added) {
    const std::size_t diagonal = index_of(added.diagonal);
    if (diagonal >= space.newest.size()) space.newest.resize(diagonal + 1, no_state);
    for (int i = space.newest[diagonal]; i != no_state; i = space.states[static_cast<std::size_t>(i)].older) {
      state& other = space.states[static_cast<std::size_t>(i)];
      if (other.at.s != added.at.s) continue;
      if (other.at.score > added.at.score || (other.at.score == added.at.score && other.first <= added.first)) return;
      if (static_cast<std::size_t>(i) < layer_end) continue;
      other.at.score = added.at.score;
      other.first = added.first;
      return;
    }
    added.older = space.newest[diagonal];
    space.newest[diagonal] = static_cast<int>(space.states.size());
    space.states.push_back(added);
  }
};

#endif
