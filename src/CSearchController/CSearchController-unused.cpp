// What no search mode uses, and other programs on this class may: the extension and its look-ahead by themselves, and a
// greedy scan from left to right, in which the first unit length that passes wins and no repeat reaches back into the
// one before it.

#include <algorithm>

#include "CSearchController.h"
#include "extension.h"
#include "leap-ahead.h"

void CSearchController::extend_imperfect_forward(Csat& sat, const char* seq_end) {
  CUnitText unit;
  unit.set(sat.unit_begin, sat.unit_end);
  CShortcuts as_defined;
  extend_right(sat, current_scoring(), unit, seq_end, as_defined);
}

void CSearchController::extend_imperfect_backward(Csat& sat, const char* seq_stop) {
  CUnitText unit;
  unit.set(sat.unit_begin, sat.unit_end);
  CShortcuts as_defined;
  extend_left(sat, current_scoring(), unit, seq_stop + 1, as_defined);
}

int CSearchController::extend_imperfect_forward_leap_ahead(const char* s, const char* u, const char* unit_begin,
                                                           const char* unit_end, int score, int /*unit_length*/,
                                                           unsigned char depth, const char* seq_end, int best_score) {
  CUnitText unit;
  unit.set(unit_begin, unit_end);
  return leap_ahead<rightwards>({s, static_cast<int>(u - unit_begin), score}, depth, best_score, current_scoring(),
                                unit, seq_end);
}

int CSearchController::extend_imperfect_backward_leap_ahead(const char* s, const char* u, const char* unit_begin,
                                                            const char* unit_end, int score, int /*unit_length*/,
                                                            unsigned char depth, const char* seq_stop, int best_score) {
  CUnitText unit;
  unit.set(unit_begin, unit_end);
  return leap_ahead<leftwards>({s, static_cast<int>(u - unit_begin), score}, depth, best_score, current_scoring(), unit,
                               seq_stop + 1);
}

bool CSearchController::simple_search_at(const char* p, const char* left_stop, CSpareSat& spare) {
  for (unsigned L = std::max(1U, settings.min_unit_length); L <= settings.max_unit_length && seq_end() - p > L; ++L) {
    if (!is_candidate(p, L)) continue;
    Csat& sat = spare.take(p, p + L);
    const CUnitText& unit = unit_text_of(sat);
    extend_right(sat, settings.rules, unit, seq_end(), shortcuts);
    extend_left(sat, settings.rules, unit, left_stop + 1, shortcuts);
    sat.trim_Ns();
    if (is_reportable(sat)) return true;
  }
  return false;
}

void CSearchController::simple_imperfect_search(std::FILE* out) {
  print_opening_lines(out);
  CSpareSat spare(workspace.pool);
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
