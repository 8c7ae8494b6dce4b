// Extend-exact mode: short perfect seeds, grown to imperfect repeats.

#include "CSearchController.h"
#include "global-types-and-parameters.h"

namespace {

// The user's thresholds in force while this lives.
class CUserThresholds {
 public:
  CUserThresholds() {
    CSearchController::minScores = CSearchController::minScores_user;
    CSearchController::minLengths = CSearchController::minLengths_user;
  }
  CUserThresholds(const CUserThresholds&) = delete;
  CUserThresholds& operator=(const CUserThresholds&) = delete;
  ~CUserThresholds() {
    CSearchController::minScores = scores;
    CSearchController::minLengths = lengths;
  }

 private:
  int* scores = CSearchController::minScores;
  int* lengths = CSearchController::minLengths;
};

}  // namespace

// A trial extension decides. It reads nothing that other seeds change: a seed that fails it would fail as well when all
// seeds are extended, and leave no trace.
bool CSearchController::may_be_accepted(const Csat& seed, CSpareSat& trial) const {
  const CUserThresholds user_thresholds;
  Csat& sat = trial.take(seed.unit_begin, seed.unit_end);
  sat.pos_left = seed.pos_left;
  sat.pos_right = seed.pos_right;
  sat.fwd_unit_cursor = seed.fwd_unit_cursor;
  sat.bwd_unit_cursor = seed.bwd_unit_cursor;
  sat.score = seed.score;
  sat.number_of_Ns = seed.number_of_Ns;
  return extend_imperfect(sat);
}

void CSearchController::search_exact_and_extend_to_imperfect_repeats() {
  std::fputs("  Searching for exact repeats.\n", stderr);
  std::fflush(stderr);
  minScores = minScores_intern;
  minLengths = minLengths_intern;
  exact_search_for_seeds();
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
