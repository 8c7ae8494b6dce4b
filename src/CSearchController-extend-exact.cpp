// Extend-exact mode: short perfect seeds, grown to imperfect repeats.

#include "CSearchController.h"
#include "global-types-and-parameters.h"

void CSearchController::search_exact_and_extend_to_imperfect_repeats() {
  std::fputs("  Searching for exact repeats.\n", stderr);
  std::fflush(stderr);
  minScores = minScores_intern;
  minLengths = minLengths_intern;
  exact_search_2();
  minScores = minScores_user;
  minLengths = minLengths_user;
  std::fputs("  Extend exact to imperfect repeats.\n", stderr);
  std::fflush(stderr);

  while (!result_list.records.empty()) {
    Csat& sat = *result_list.records.front();
    if (extend_imperfect(sat)) {
      sat.sort_missense();
      work_list.take_last(result_list, result_list.records.begin());
    } else {
      sat_alloc.records.splice(sat_alloc.records.end(), result_list.records, result_list.records.begin());
    }
  }
  work_list.sort();
}
