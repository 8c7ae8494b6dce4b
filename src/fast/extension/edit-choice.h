#pragma once

#include <optional>

#include "edit-outlook.h"
#include "layered-choice.h"
#include "look-ahead.h"
#include "run-ends.h"
#include "symbols-ahead.h"

// Which edit an extension makes at a mismatch, and whether it need go on at all. Each choice is made by run-ends.h
// where that knows all that it needs, otherwise by layered-choice.h; both find the same.
//
// An extension has no future when the scores that it needs to keep more than its best end lie out of reach. The
// look-ahead of a choice shows it when no edit is admissible any more before its depth is used up: then it has followed
// all paths there are, and that of the extension is among them.
//
// Premise: the score reduction is unlimited.

// What choices need, kept from extension to extension for its memory.
struct edit_choice_space {
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
  }

  // The choice at a mismatch reached after `depth` edits of the look-ahead. `none` when no edit is admissible, or when
  // no path of any number of edits leads to a score of `needed`; is_hopeless() tells the second case.
  edit choose(const extension_state& from, unsigned char depth, int needed) {
    const edit_outlook outlook = look_ahead(from, depth);
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

  edit_outlook look_ahead(const extension_state& from, unsigned char depth) {
    CRunEnds& run_ends = space.run_ends;
    if (run_ends.applies() && depth == 0) {
      space.ahead.compare<Direction>(from, unit, end, rules.passes_over_Ns, run_ends.radius());
      if (run_ends.choose(space.ahead, from.score)) return run_ends.outlook();
    }
    if (!by_layers) by_layers.emplace(rules, unit, end, space.states);
    return by_layers->choose(from, depth);
  }
};
