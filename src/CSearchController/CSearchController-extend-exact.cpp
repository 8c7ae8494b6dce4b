// Extend-exact mode: short perfect seeds, grown to imperfect repeats.

#include <list>

#include "CSearchController.h"

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
    if (extend_both_ways(sat, unit_text_of(sat))) {
      sat.sort_missense();
      work_list.take_last(result_list, seeds.begin());
    } else {
      workspace.pool.records.splice(workspace.pool.records.end(), seeds, seeds.begin());
    }
  }
  work_list.sort();
}
