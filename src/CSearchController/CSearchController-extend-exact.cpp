// Extend-exact mode: short perfect seeds, grown to imperfect repeats.

#include <list>

#include "CSearchController.h"
#include "extension.h"

// Extends the seed and gives up the N's at its ends. Returns whether it passes the thresholds.
bool CSearchController::extend_seed(Csat& sat) {
  const CUnitText& unit = unit_text_of(sat);
  if (shortcuts.may_grow(sat, unit, true)) extend_right(sat, settings.rules, unit, seq_end(), shortcuts);
  if (shortcuts.may_grow(sat, unit, false)) extend_left(sat, settings.rules, unit, seq_begin(), shortcuts);
  sat.trim_Ns();
  return is_reportable(sat);
}

void CSearchController::search_exact_and_extend_to_imperfect_repeats() {
  tell_step("  Searching for exact repeats.\n");
  find_seeds();
  tell_step("  Extend exact to imperfect repeats.\n");
  extend_seeds();
}

void CSearchController::find_seeds() {
  const CRecordInHand in_hand(*this);
  search_exact(for_seeds);
}

void CSearchController::extend_seeds() {
  const CRecordInHand in_hand(*this);
  std::list<Csat*>& seeds = result_list.records;
  while (!seeds.empty()) {
    Csat& sat = *seeds.front();
    bool is_accepted = false;
    if (shortcuts.is_new_seed(sat, is_accepted)) {
      is_accepted = extend_seed(sat);
      if (is_accepted) sat.sort_missense();
      shortcuts.note_extension(sat, is_accepted);
    }
    if (is_accepted) {
      work_list.take_last(result_list, seeds.begin());
    } else {
      workspace.pool.records.splice(workspace.pool.records.end(), seeds, seeds.begin());
    }
  }
  work_list.sort();
}
