#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include "edit-outlook.h"
#include "layered-choice.h"
#include "look-ahead.h"
#include "remembered-choices.h"
#include "run-ends.h"
#include "symbols-ahead.h"

// Which edit an extension makes at a mismatch, and whether it need go on at all. Each choice is made by run-ends.h
// where that knows all that it needs, otherwise by layered-choice.h; both find the same. Those of long units are
// remembered, if the score is so far above the floor that no edit of the look-ahead, nor one after the last, meets it.
//
// An extension has no future when the scores that it needs to keep more than its best end lie out of reach. The
// look-ahead of a choice shows it when no edit is admissible any more before its depth is used up: then it has followed
// all paths there are, and that of the extension is among them.
//
// Premise: the score reduction is unlimited.

// What choices need, kept from extension to extension for its memory.
struct edit_choice_space {
  CRememberedChoices remembered;
  CRunEnds run_ends;
  CSymbolsAhead ahead;
  layered_states states;
};

template <typename Direction>
class CEditChoice {
 public:
  CEditChoice(const scoring& its_rules, const CUnitText& its_unit, const char* its_end, edit_choice_space& its_space)
      : rules(its_rules), unit(its_unit), end(its_end), space(its_space) {
    space.run_ends.set(rules, unit.length());
    if (unit.length() < CRememberedChoices::shortest_unit) return;
    const int dearer = std::min(rules.mismatch_score, rules.indel_score);
    least_for_memory = rules.least_after_edit(unit.length()) - (std::int64_t{rules.recursion_depth} + 1) * dearer;
  }

  // The choice at a mismatch reached after `depth` edits of the look-ahead. `none` when no edit is admissible, or when
  // no path of any number of edits leads to a score of `needed`; is_hopeless() tells the second case.
  edit choose(const extension_state& from, unsigned char depth, int needed) {
    const bool is_memorable = from.score >= least_for_memory && depth == 0;
    hopeless = false;
    if (is_memorable) {
      const CRememberedChoices::choice* const known = space.remembered.find(place_of(from));
      if (known != nullptr && is_within_reach(from, known->reach)) return known->chosen;
    }
    const edit_outlook outlook = look_ahead(from, depth, is_memorable ? std::numeric_limits<int>::min() : needed);
    if (is_memorable) {
      const int reach = farthest();
      if (reach <= most_reach && is_within_reach(from, reach)) {
        space.remembered.keep(place_of(from), {static_cast<std::uint16_t>(reach), outlook.chosen});
        return outlook.chosen;
      }
    }
    hopeless = outlook.chosen != edit::none && outlook.highest < needed && !outlook.is_cut;
    return hopeless ? edit::none : outlook.chosen;
  }

  bool is_hopeless() const { return hopeless; }

 private:
  scoring rules;
  const CUnitText& unit;
  const char* end;
  edit_choice_space& space;
  std::optional<CLayeredChoice<Direction>> by_layers;
  bool hopeless = false;

  static constexpr int most_reach = std::numeric_limits<std::uint16_t>::max();
  std::int64_t least_for_memory = std::numeric_limits<std::int64_t>::max();
  bool is_by_run_ends = false;  // the choice made last

  // How far ahead its look-ahead stood at a mismatch, or at the end.
  int farthest() const { return is_by_run_ends ? space.run_ends.farthest() : by_layers->farthest(); }

  CRememberedChoices::place place_of(const extension_state& from) const {
    return {from.s, static_cast<std::int32_t>(Direction::first_of(from.s, 1) - (unit.origin() + from.u))};
  }

  // Whether the symbol `reach` ahead is one of the record, and all unit symbols that look-aheads compare up to there,
  // which deletions carry beyond it, come before the unit begins anew.
  bool is_within_reach(const extension_state& from, int reach) const {
    const int last = Direction::unit_steps(from.u, reach + rules.recursion_depth);
    return Direction::left_over(from.s, end) > reach && 0 <= last && last < unit.length();
  }

  edit_outlook look_ahead(const extension_state& from, unsigned char depth, int needed) {
    CRunEnds& run_ends = space.run_ends;
    if (run_ends.applies() && depth == 0) {
      space.ahead.compare<Direction>(from, unit, end, rules.passes_over_Ns, run_ends.radius());
      is_by_run_ends = run_ends.choose(space.ahead, from.score, needed);
      if (is_by_run_ends) return run_ends.outlook();
    }
    is_by_run_ends = false;
    if (!by_layers) by_layers.emplace(rules, unit, end, space.states);
    return by_layers->choose(from, depth);
  }
};
