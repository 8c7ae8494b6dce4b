#include "search-settings.h"

#include "CSearchController.h"
#include "global-types-and-parameters.h"

scoring current_scoring() {
  return {
      global_mismatch_score,          global_indel_score, global_maximum_scorereduction, global_prefer_longer_repeat,
      global_maximum_recursion_depth, Ns_are_neutral(),   global_Ns_allowed_in_a_row};
}

search_settings current_search_settings() {
  const std::size_t count = static_cast<std::size_t>(global_max_unit_length) + 1;
  search_settings settings;
  settings.rules = current_scoring();
  settings.min_unit_length = global_min_unit_length;
  settings.max_unit_length = global_max_unit_length;
  settings.min_scores.assign(CSearchController::minScores_user, CSearchController::minScores_user + count);
  settings.min_lengths.assign(CSearchController::minLengths_user, CSearchController::minLengths_user + count);
  settings.min_perfection = global_min_perfection;
  settings.max_perfection = global_max_perfection;
  settings.N_and_perfection_mode = global_N_and_perfection_mode;
  settings.removes_mostly_hidden = global_remove_mostly_hidden;
  return settings;
}
