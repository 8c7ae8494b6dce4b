#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "edit-outlook.h"
#include "look-ahead.h"
#include "perfect-run.h"
#include "three-edits.h"

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
// A state with fewer edits can do what one with more edits can, so places are shared with the layers before, too.
//
// Cost: little more than 2 d + 1 states after d edits, instead of 3^d.

// The states of a choice, kept from choice to choice for their memory.
struct layered_states {
  static constexpr int none = -1;

  struct state {
    extension_state at;
    int diagonal;  // unit symbols minus sequence symbols consumed by edits, in the range that stands for all
    edit first;
    int older;  // the state placed before on the same diagonal
  };

  struct diagonal_states {
    std::uint64_t offsets = 0;  // bit i % 64: there may be a state i symbols from the mismatch
    int newest = none;
  };

  std::vector<state> states;               // of all layers
  std::vector<diagonal_states> diagonals;  // in the order 0, -1, 1, -2, 2, ...
  std::size_t diagonals_in_use = 0;        // those after are left over
};

template <typename Direction>
class CLayeredChoice {
 public:
  CLayeredChoice(const scoring& its_rules, const CUnitText& its_unit, const char* its_end, layered_states& its_space)
      : rules(its_rules),
        unit(its_unit),
        end(its_end),
        space(its_space),
        lowest(rules.least_after_edit(its_unit.length())) {}

  // The choice at a mismatch reached after `depth` edits of the look-ahead.
  edit_outlook choose(const extension_state& from, unsigned char depth) {
    highest = std::numeric_limits<int>::min();
    chosen = edit::none;
    space.states.clear();
    space.diagonals_in_use = 0;
    start = from.s;
    space.states.push_back({from, 0, edit::none, no_state});
    layer_begin = 0;
    is_cut = false;
    its_farthest = 0;
    do {
      ++depth;
      is_last = depth == rules.recursion_depth;
      place_layer();
    } while (layer_begin != space.states.size());
    return {chosen, highest, is_cut};
  }

  // How many symbols ahead of the mismatch a path of it stood at a mismatch, or at the end.
  int farthest() const { return its_farthest; }

 private:
  using state = layered_states::state;
  using diagonal_states = layered_states::diagonal_states;
  static constexpr int no_state = layered_states::none;

  scoring rules;
  const CUnitText& unit;
  const char* end;
  layered_states& space;
  std::int64_t lowest;  // the least score after an edit
  const char* start = nullptr;
  int highest = 0;
  edit chosen = edit::none;
  bool is_last = false;  // no edit of the look-ahead may follow those of this layer
  bool is_cut = false;   // one would be admissible
  int its_farthest = 0;
  std::size_t layer_begin = 0;  // the layer being left is states [layer_begin, layer_end)
  std::size_t layer_end = 0;

  static edit mark(const state& from, edit made) { return from.first == edit::none ? made : from.first; }

  // Makes the next layer after this one.
  void place_layer() {
    layer_end = space.states.size();
    for (std::size_t i = layer_begin; i != layer_end; ++i) {
      const state from = space.states[i];
      place_edits(from);
    }
    layer_begin = layer_end;
  }

  void place_edits(const state& from) {
    each_edit<Direction>(from.at, rules, unit.length(), lowest, [&](edit made, const extension_state& after) {
      const int moved = made == edit::deletion ? 1 : made == edit::insertion ? -1 : 0;
      place({after, reduced(from.diagonal + moved), mark(from, made), no_state});
    });
  }

  // Diagonals the unit length apart are one.
  int reduced(int diagonal) const {
    if (diagonal > unit.length() / 2) return diagonal - unit.length();
    return diagonal < -(unit.length() - 1) / 2 ? diagonal + unit.length() : diagonal;
  }

  void note(int score, edit first) {
    if (score < highest || (score == highest && first >= chosen)) return;
    highest = score;
    chosen = first;
  }

  // Moves the state to the end of its perfect run and, if edits may follow there, into the next layer.
  void place(state added) {
    run_on<Direction>(added.at, unit, end, rules.passes_over_Ns);
    note(added.at.score, added.first);
    its_farthest = std::max(its_farthest, static_cast<int>(Direction::left_over(start, added.at.s)));
    const int cheaper = std::max(rules.mismatch_score, rules.indel_score);
    if (added.at.s == end || static_cast<std::int64_t>(added.at.score) + cheaper < lowest) return;
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
    const std::size_t index = index_of(added.diagonal);
    while (index >= space.diagonals_in_use) use_next_diagonal();
    diagonal_states& diagonal = space.diagonals[index];
    const std::uint64_t bit = std::uint64_t{1} << (Direction::left_over(start, added.at.s) % 64);
    if ((diagonal.offsets & bit) != 0 && is_merged(added, diagonal)) return;
    diagonal.offsets |= bit;
    added.older = diagonal.newest;
    diagonal.newest = static_cast<int>(space.states.size());
    space.states.push_back(added);
  }

  void use_next_diagonal() {
    if (space.diagonals_in_use == space.diagonals.size()) space.diagonals.emplace_back();
    space.diagonals[space.diagonals_in_use++] = {};
  }

  bool is_merged(const state& added, const diagonal_states& diagonal) {
    for (int i = diagonal.newest; i != no_state; i = space.states[static_cast<std::size_t>(i)].older) {
      state& other = space.states[static_cast<std::size_t>(i)];
      if (other.at.s != added.at.s) continue;
      if (other.at.score > added.at.score || (other.at.score == added.at.score && other.first <= added.first)) {
        return true;
      }
      if (static_cast<std::size_t>(i) < layer_end) continue;
      other.at.score = added.at.score;
      other.first = added.first;
      return true;
    }
    return false;
  }
};
