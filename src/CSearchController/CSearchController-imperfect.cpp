// Imperfect mode: every position and unit length is tried as the seed of an imperfect repeat.

#include "CSearchController.h"
#include "extension.h"

void CSearchController::complete_imperfect_search(std::FILE* /*out*/) {
  const CRecordInHand in_hand(*this);
  CAnchorSeq mask = make_mask();
  unsigned L = settings.min_unit_length;
  if (L == 1) {
    unit_len_1_complete_imperfect_search(mask, work_list);
    mask.free_all();
    L = 2;
  }
  for (; L <= settings.max_unit_length; ++L) one_unit_len_complete_imperfect_search(L, mask, work_list);
  work_list.sort();
}

// Extends the candidate [p, p + L) if it may be anchored; if accepted, covers it in the mask and appends it. Changes
// nothing otherwise. Returns whether it was accepted.
bool CSearchController::try_candidate(const char* p, unsigned L, CAnchorSeq& mask, CSpareSat& spare,
                                      CsatContainer& found) {
  if (!mask.may_anchor(p, L) || !is_candidate(p, L)) return false;
  Csat& sat = spare.take(p, p + L);
  if (!extend_imperfect(sat)) return false;
  sat.sort_missense();
  mask.cover(sat);
  spare.move_to(found);
  return true;
}

bool CSearchController::extend_imperfect(Csat& sat) {
  const CUnitText& unit = unit_text_of(sat);
  const int least_score = settings.min_scores[static_cast<unsigned>(sat.unit_length())];
  return shortcuts.may_reach(sat, unit, least_score) && extend_both_ways(sat, unit);
}

bool CSearchController::extend_both_ways(Csat& sat, const CUnitText& unit) {
  extend_right(sat, settings.rules, unit, seq_end(), shortcuts);
  extend_left(sat, settings.rules, unit, seq_begin(), shortcuts);
  sat.trim_Ns();
  return is_reportable(sat);
}

void CSearchController::try_candidates(unsigned L, CAnchorSeq& mask, CsatContainer& found) {
  CSpareSat spare(workspace.pool);
  CPoll poll(first_start());
  for (const char* p = shortcuts.first_candidate(L, mask); p != nullptr;) {
    if (poll.is_due(p)) report_progress(L);
    const bool is_accepted = try_candidate(p, L, mask, spare, found);
    p = shortcuts.next_candidate(is_accepted);
  }
}

// With L = 1 the anchor test is that the position itself is free.
void CSearchController::unit_len_1_complete_imperfect_search(CAnchorSeq& mask, CsatContainer& found) {
  if (sequence.symbols.length < 2) return;
  report_progress(1);
  try_candidates(1, mask, found);
}

void CSearchController::one_unit_len_complete_imperfect_search(unsigned L, CAnchorSeq& mask, CsatContainer& found) {
  if (L == 0 || L >= sequence.symbols.length) return;
  report_progress(L);
  // A unit of one symbol is a candidate in the pass for unit length 1 alone, which a minimum of 0 does not run.
  if (L > 1) try_candidates(L, mask, found);
}
