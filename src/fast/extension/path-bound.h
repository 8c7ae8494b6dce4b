#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "Csat.h"
#include "perfect-run.h"
#include "scoring.h"
#include "unit-text.h"

// The alignment bound of alignment-program.h for one candidate, without rounding: the best score over all paths that
// match whenever they can, edit only at mismatches and stay at -b or above by every edit, to the right and then
// to the left from what that gave.
//
// Contract: may_reach is true whenever the extension of the candidate can end with a score of at least T. It holds for
// all parameters, since recursion depth, score reduction and the rules at the ends only restrict the paths. Neutral N's
// are passed over for 0. Gives up, and answers true, where a path tree is large.
class CPathBound {
 public:
  CPathBound(const scoring& its_rules, const char* its_begin, const char* its_end)
      : rules(its_rules), seq_begin(its_begin), seq_end(its_end) {}

  // For a record that is about to be extended; `unit` is the text of its unit.
  bool may_reach(const Csat& sat, const CUnitText& unit, int T) {
    threshold = T;
    highest = sat.score;
    visits_left = most_visits;
    const std::int64_t lowest = rules.least_after_edit(unit.length());
    least_for_mismatch = at_least(lowest - rules.mismatch_score);
    least_for_indel = at_least(lowest - rules.indel_score);
    const auto index = [&sat](const char* cursor) { return static_cast<int>(cursor - sat.unit_begin); };
    if (!visit<rightwards>({sat.pos_right, index(sat.fwd_unit_cursor), sat.score}, unit, seq_end)) return true;
    return !visit<leftwards>({sat.pos_left, index(sat.bwd_unit_cursor), highest}, unit, seq_begin);
  }

 private:
  static constexpr int most_visits = 150;

  scoring rules;
  const char* seq_begin;
  const char* seq_end;
  int threshold = 0;
  int highest = 0;
  int visits_left = 0;
  int least_for_mismatch = 0;  // the score that an edit needs before it
  int least_for_indel = 0;

  static int at_least(std::int64_t score) {
    return static_cast<int>(std::min<std::int64_t>(score, std::numeric_limits<int>::max()));
  }

  // Follows all paths from the state. Returns false as soon as one reaches the threshold, or when there are too many.
  template <typename Direction>
  bool visit(extension_state at, const CUnitText& unit, const char* end) {
    for (;;) {
      if (--visits_left < 0) return false;
      run_on<Direction>(at, unit, end, rules.passes_over_Ns);
      highest = std::max(highest, at.score);
      if (highest >= threshold) return false;
      if (at.s == end) return true;
      const int u = Direction::unit_step(at.u, unit.length());
      const char* const s = Direction::step(at.s);
      if (at.score >= least_for_indel) {
        if (!visit<Direction>({s, at.u, at.score + rules.indel_score}, unit, end)) return false;
        if (!visit<Direction>({at.s, u, at.score + rules.indel_score}, unit, end)) return false;
      }
      if (at.score < least_for_mismatch) return true;
      at = {s, u, at.score + rules.mismatch_score};
    }
  }
};
