#pragma once

#include <cstdint>

#include "perfect-run.h"
#include "scoring.h"
#include "unit-text.h"

// Which ends of a repeat an extension may move at all.
//
// Contract: may_grow is true whenever the extension of a repeat in one direction can change the record.
//
// Argument. In front of a mismatch an extension takes its snapshot at once, with the repeat's score as the best. From
// then on it stands, after each edit and the run after it, at the end of a path that matches whenever it can and edits
// only at mismatches, and whose score was above -L - P after each edit. It keeps what it did only if one of these ends
// has a score of at least best - P; otherwise it returns to the snapshot. All such paths are followed here. Recursion
// depth and score reduction only take some away, and the N runs at which an extension stops, but not a path here, cost
// a path nothing. Where there are too many paths the answer is true.
//
// Premises: none.
class CGrowthBound {
 public:
  explicit CGrowthBound(const scoring& its_rules) : rules(its_rules) {}

  // Whether the repeat that ends at `at`, extended in the direction up to `end`, may change.
  template <typename Direction>
  bool may_grow(const extension_state& at, const CUnitText& unit, const char* end) {
    if (at.s == end) return false;
    const char next = Direction::ahead(at.s);
    if (next == unit.begin()[at.u] || (next == 'N' && rules.passes_over_Ns)) return true;
    needed = at.score - rules.prefer_longer;
    lowest = rules.least_after_edit(unit.length());
    paths_left = most_paths;
    return edits_lead_there<Direction>(at, unit, end);
  }

 private:
  static constexpr int most_paths = 150;

  scoring rules;
  int needed = 0;
  std::int64_t lowest = 0;  // the least score after an edit
  int paths_left = 0;

  bool is_admissible(int score, int penalty) const { return static_cast<std::int64_t>(score) + penalty >= lowest; }

  template <typename Direction>
  bool edits_lead_there(const extension_state& at, const CUnitText& unit, const char* end) {
    const int u = Direction::unit_step(at.u, unit.length());
    const char* const s = Direction::step(at.s);
    if (is_admissible(at.score, rules.mismatch_score) &&
        leads_there<Direction>({s, u, at.score + rules.mismatch_score}, unit, end)) {
      return true;
    }
    return is_admissible(at.score, rules.indel_score) &&
           (leads_there<Direction>({s, at.u, at.score + rules.indel_score}, unit, end) ||
            leads_there<Direction>({at.s, u, at.score + rules.indel_score}, unit, end));
  }

  template <typename Direction>
  bool leads_there(extension_state at, const CUnitText& unit, const char* end) {
    if (--paths_left < 0) return true;
    run_on<Direction>(at, unit, end, rules.passes_over_Ns);
    if (at.score >= needed) return true;
    return at.s != end && edits_lead_there<Direction>(at, unit, end);
  }
};
