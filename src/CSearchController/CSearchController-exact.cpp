// The exact search: runs in which a unit follows itself without an edit, short runs of N's passed over.

#include <algorithm>
#include <utility>

#include "CSearchController.h"

namespace {

// The number of N's in the stretch of `length` symbols from s on in the direction of `step`, up to the first other
// symbol; counted no further than one more than may be passed over.
std::ptrdiff_t N_run(const char* s, std::ptrdiff_t length, int step, int Ns_in_a_row) {
  const std::ptrdiff_t enough = std::min(length, static_cast<std::ptrdiff_t>(Ns_in_a_row) + 1);
  std::ptrdiff_t run = 0;
  while (run < enough && s[run * step] == 'N') ++run;
  return run;
}

void extend_exact_right(Csat& sat, const char* seq_end, const scoring& rules) {
  while (sat.pos_right != seq_end) {
    if (*sat.pos_right == *sat.fwd_unit_cursor) {
      ++sat.score;
      ++sat.pos_right;
      sat.fwd_unit_cursor = sat.unit_successor(sat.fwd_unit_cursor);
      continue;
    }
    if (*sat.pos_right != 'N' || !rules.passes_over_Ns) return;
    const std::ptrdiff_t run = N_run(sat.pos_right, seq_end - sat.pos_right, 1, rules.Ns_in_a_row);
    if (run > rules.Ns_in_a_row) return;
    for (std::ptrdiff_t i = 0; i < run; ++i) {
      ++sat.pos_right;
      sat.fwd_unit_cursor = sat.unit_successor(sat.fwd_unit_cursor);
      ++sat.number_of_Ns;
    }
  }
}

void extend_exact_left(Csat& sat, const char* seq_begin, const scoring& rules) {
  while (sat.pos_left != seq_begin) {
    if (sat.pos_left[-1] == *sat.bwd_unit_cursor) {
      ++sat.score;
      --sat.pos_left;
      sat.bwd_unit_cursor = sat.unit_predecessor(sat.bwd_unit_cursor);
      continue;
    }
    if (sat.pos_left[-1] != 'N' || !rules.passes_over_Ns) return;
    const std::ptrdiff_t run = N_run(sat.pos_left - 1, sat.pos_left - seq_begin, -1, rules.Ns_in_a_row);
    if (run > rules.Ns_in_a_row) return;
    for (std::ptrdiff_t i = 0; i < run; ++i) {
      --sat.pos_left;
      sat.bwd_unit_cursor = sat.unit_predecessor(sat.bwd_unit_cursor);
      ++sat.number_of_Ns;
    }
  }
}

}  // namespace

// One exact search: what its steps share.
struct CSearchController::exact_pass {
  CAnchorSeq mask;
  CSpareSat spare;
  exact_purpose purpose;

  exact_pass(CAnchorSeq its_mask, Csat_garbagecollector& pool, exact_purpose for_what)
      : mask(std::move(its_mask)), spare(pool), purpose(for_what) {}
};

void CSearchController::exact_search_2() {
  const CRecordInHand in_hand(*this);
  search_exact(for_report);
}

void CSearchController::search_exact(exact_purpose purpose) {
  exact_pass pass(make_mask(), workspace.pool, purpose);
  unsigned L = settings.min_unit_length;
  if (L == 1) {
    exact_search_of_unit_length_1(pass);
    L = 2;
  }
  for (; L <= settings.max_unit_length; ++L) exact_search_of_unit_length(L, pass);
  result_list.sort();
}

void CSearchController::begin_exact_scan(unsigned L, const exact_pass& pass) {
  const bool seeds = pass.purpose == for_seeds;
  shortcuts.begin_exact_scan({L, seeds ? min_score_of_seeds(L) : settings.min_scores[L],
                              seeds ? 0 : settings.min_lengths[L], L == 1 ? nullptr : &pass.mask, seeds});
}

void CSearchController::extend_exact(Csat& sat) {
  if (shortcuts.is_known_repeat(sat)) return;
  extend_exact_right(sat, seq_end(), settings.rules);
  extend_exact_left(sat, seq_begin(), settings.rules);
  sat.trim_Ns();
}

// Whether the repeat passes the thresholds in force: those of seeds in extend-exact mode, else the user's.
bool CSearchController::passes_thresholds(const Csat& sat, const exact_pass& pass) const {
  if (pass.purpose == for_report) return is_reportable(sat);
  return sat.score >= min_score_of_seeds(static_cast<unsigned>(sat.unit_length())) && sat.length() >= 0;
}

bool CSearchController::is_stored(const Csat& sat, const exact_pass& pass) {
  if (!passes_thresholds(sat, pass)) return false;
  return pass.purpose == for_report || shortcuts.is_worth_storing(sat, unit_text_of(sat));
}

// Whether the repeat closes its symbols to the units tried after it: those that the user will see do.
bool CSearchController::is_covered(const Csat& sat, const exact_pass& pass) const {
  return passes_thresholds(sat, pass) && is_reportable(sat) &&
         settings.is_in_range(sat.perfection(settings.N_and_perfection_mode));
}

// Single symbols are neither tested for their perfection nor written into the mask.
void CSearchController::exact_search_of_unit_length_1(exact_pass& pass) {
  if (sequence.symbols.length < 2) return;
  begin_exact_scan(1, pass);
  CPoll poll(first_start());
  for (const char* a = shortcuts.next_start(first_start()); a != nullptr && a < after_starts() && seq_end() - a > 1;) {
    if (poll.is_due(a)) report_progress(1);
    if (*a == 'N') {
      a = shortcuts.next_start(a + 1);
      continue;
    }
    Csat& sat = pass.spare.take(a, a + 1);
    extend_exact(sat);
    const bool stored = is_stored(sat, pass);
    a = stored ? sat.pos_right : shortcuts.start_after(sat, stored, false);
    if (stored) pass.spare.move_to(result_list);
    a = shortcuts.next_start(a);
  }
}

void CSearchController::exact_search_of_unit_length(unsigned L, exact_pass& pass) {
  if (L == 0 || L >= sequence.symbols.length) return;
  report_progress(L);
  // A unit of one symbol is searched in the pass for single symbols alone, which a minimum of 0 does not run.
  if (L == 1) return;
  begin_exact_scan(L, pass);
  CPoll poll(first_start());
  for (const char* p = shortcuts.next_start(first_start()); p != nullptr && p < after_starts() && seq_end() - p > L;) {
    if (poll.is_due(p)) report_progress(L);
    if (!pass.mask.may_anchor(p, L) || !is_candidate(p, L)) {
      p = shortcuts.next_start(p + 1);
      continue;
    }
    Csat& sat = pass.spare.take(p, p + L);
    extend_exact(sat);
    const bool stored = is_stored(sat, pass);
    const bool covered = is_covered(sat, pass);
    if (covered) pass.mask.cover(sat);
    const char* const next = shortcuts.start_after(sat, stored, covered);
    if (stored) pass.spare.move_to(result_list);
    p = shortcuts.next_start(next);
  }
}
