// A greedy scan from left to right: the first unit length that passes wins, and no repeat reaches back into the one
// before it.

#include <algorithm>

#include "CSearchController.h"
#include "global-types-and-parameters.h"

namespace {

bool is_candidate_unit(const char* begin, const char* end) {
  if (std::find(begin, end, 'N') != end) return false;
  return end - begin == 1 || !std::all_of(begin + 1, end, [begin](char c) { return c == *begin; });
}

}  // namespace

bool CSearchController::simple_search_at(const char* p, const char* left_stop, CSpareSat& spare) {
  for (unsigned L = std::max(1U, global_min_unit_length); L <= global_max_unit_length && seq_end() - p > L; ++L) {
    if (!is_candidate_unit(p, p + L)) continue;
    Csat& sat = spare.take(p, p + L);
    extend_imperfect_forward(sat, seq_end());
    extend_imperfect_backward(sat, left_stop);
    sat.trim_Ns();
    if (passes_thresholds(sat)) return true;
  }
  return false;
}

void CSearchController::simple_imperfect_search(std::FILE* out) {
  print_opening_lines(out);
  CSpareSat spare;
  const char* left_stop = seq_begin() - 1;
  for (const char* p = seq_begin(); p < seq_end();) {
    if (!simple_search_at(p, left_stop, spare)) {
      ++p;
      continue;
    }
    spare.move_to(work_list);
    Csat& sat = *work_list.records.back();
    sat.sort_missense();
    sat.report_sat(out, sequence);
    p = sat.pos_right;
    left_stop = p - 1;
  }
}
