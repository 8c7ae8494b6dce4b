// Imperfect mode: every position and unit length is tried as the seed of an imperfect repeat.

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

}  // namespace

void CSearchController::complete_imperfect_search(std::FILE* /*out*/) {
  CAnchorSeq mask(sequence);
  unsigned L = global_min_unit_length;
  if (L == 1) {
    unit_len_1_complete_imperfect_search(mask, work_list);
    mask.free_all();
    L = 2;
  }
  for (; L <= global_max_unit_length; ++L) one_unit_len_complete_imperfect_search(L, mask, work_list);
  work_list.sort();
}

void CSearchController::try_candidate(const char* p, unsigned L, CAnchorSeq& mask, CSpareSat& spare,
                                      CsatContainer& found) {
  Csat& sat = spare.take(p, p + L);
  extend_imperfect_forward(sat, seq_end());
  extend_imperfect_backward(sat, seq_begin() - 1);
  sat.trim_Ns();
  if (!passes_thresholds(sat)) return;
  sat.sort_missense();
  mask.cover(sat);
  spare.move_to(found);
}

void CSearchController::unit_len_1_complete_imperfect_search(CAnchorSeq& mask, CsatContainer& found) {
  CSpareSat spare;
  for (const char* p = first_non_N(seq_begin(), seq_end()); p + 1 < seq_end(); p = first_non_N(p + 1, seq_end())) {
    if ((p - seq_begin()) % 256 == 0) report_progress(1);
    if (mask.is_free(p)) try_candidate(p, 1, mask, spare, found);
  }
}

void CSearchController::one_unit_len_complete_imperfect_search(unsigned L, CAnchorSeq& mask, CsatContainer& found) {
  if (L == 0 || L >= sequence.symbols.length) return;
  CSpareSat spare;
  const char* next_N = first_N(seq_begin(), seq_end());
  report_progress(L);
  for (const char* p = seq_begin(); p + L < seq_end();) {
    if (next_N < p) next_N = first_N(p, seq_end());
    if (mask.may_anchor(p, L) && p + L <= next_N && !is_one_symbol(p, p + L)) {
      try_candidate(p, L, mask, spare, found);
    }
    ++p;
    if ((p - seq_begin()) % 256 == 0) report_progress(L);
  }
}
