// The exact search: runs in which a unit follows itself without an edit, short runs of N's passed over.

#include <algorithm>

#include "CSearchController.h"
#include "global-types-and-parameters.h"

namespace {

const char* first_N(const char* from, const char* seq_end) { return std::find(from, seq_end, 'N'); }

const char* first_non_N(const char* from, const char* seq_end) {
  return std::find_if(from, seq_end, [](char c) { return c != 'N'; });
}

bool is_one_symbol(const char* begin, const char* end) {
  return std::all_of(begin + 1, end, [begin](char c) { return c == *begin; });
}

void extend_exact_right(Csat& sat, const char* seq_end) {
  while (sat.pos_right != seq_end) {
    if (*sat.pos_right == *sat.fwd_unit_cursor) {
      ++sat.score;
      ++sat.pos_right;
      sat.fwd_unit_cursor = sat.unit_successor(sat.fwd_unit_cursor);
      continue;
    }
    if (*sat.pos_right != 'N' || !Ns_are_neutral()) return;
    const char* const run_end = first_non_N(sat.pos_right, seq_end);
    if (run_end - sat.pos_right > global_Ns_allowed_in_a_row) return;
    for (; sat.pos_right != run_end; ++sat.pos_right) {
      sat.fwd_unit_cursor = sat.unit_successor(sat.fwd_unit_cursor);
      ++sat.number_of_Ns;
    }
  }
}

void extend_exact_left(Csat& sat, const char* seq_begin) {
  while (sat.pos_left != seq_begin) {
    if (sat.pos_left[-1] == *sat.bwd_unit_cursor) {
      ++sat.score;
      --sat.pos_left;
      sat.bwd_unit_cursor = sat.unit_predecessor(sat.bwd_unit_cursor);
      continue;
    }
    if (sat.pos_left[-1] != 'N' || !Ns_are_neutral()) return;
    const char* run_begin = sat.pos_left;
    while (run_begin != seq_begin && run_begin[-1] == 'N') --run_begin;
    if (sat.pos_left - run_begin > global_Ns_allowed_in_a_row) return;
    for (; sat.pos_left != run_begin; --sat.pos_left) {
      sat.bwd_unit_cursor = sat.unit_predecessor(sat.bwd_unit_cursor);
      ++sat.number_of_Ns;
    }
  }
}

bool is_perfection_in_range(const Csat& sat) {
  const float perfection = sat.perfection();
  return global_min_perfection <= perfection && perfection <= global_max_perfection;
}

}  // namespace

void CSearchController::exact_search_2() {
  CAnchorSeq mask(sequence);
  CSpareSat spare;
  unsigned L = global_min_unit_length;
  if (L == 1) {
    exact_search_of_unit_length_1(spare);
    L = 2;
  }
  for (; L <= global_max_unit_length; ++L) exact_search_of_unit_length(L, mask, spare);
  result_list.sort();
}

void CSearchController::exact_search_of_unit_length_1(CSpareSat& spare) {
  const char* a = first_non_N(seq_begin(), seq_end());
  while (a + 1 < seq_end()) {
    Csat& sat = spare.take(a, a + 1);
    extend_exact_right(sat, seq_end());
    extend_exact_left(sat, seq_begin());
    sat.trim_Ns();
    const char* next = a + 1;
    if (passes_thresholds(sat)) {
      next = sat.pos_right;
      spare.move_to(result_list);
    }
    a = first_non_N(next, seq_end());
    if ((a - seq_begin()) % 256 == 0) report_progress(1);
  }
}

void CSearchController::exact_search_of_unit_length(unsigned L, CAnchorSeq& mask, CSpareSat& spare) {
  if (L == 0 || L >= sequence.symbols.length) return;
  const char* next_N = first_N(seq_begin(), seq_end());
  report_progress(L);
  for (const char* p = seq_begin(); p + L < seq_end(); ++p) {
    if ((p - seq_begin()) % 256 == 0) report_progress(L);
    if (next_N < p) next_N = first_N(p, seq_end());
    if (!mask.may_anchor(p, L)) continue;
    if (p + L > next_N) continue;
    if (is_one_symbol(p, p + L)) continue;

    Csat& sat = spare.take(p, p + L);
    extend_exact_right(sat, seq_end());
    extend_exact_left(sat, seq_begin());
    sat.trim_Ns();
    if (!passes_thresholds(sat)) continue;
    if (passes_user_thresholds(sat) && is_perfection_in_range(sat)) mask.cover(sat);
    spare.move_to(result_list);
  }
}
