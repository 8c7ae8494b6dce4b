// The exact search: runs in which a unit follows itself without an edit, short runs of N's passed over.
//
// A start is looked at only if the run filter keeps it, and starts whose fate is known from an earlier one are jumped
// over. Those that are left are extended as defined, in the defined order.

#include <algorithm>
#include <cstring>

#include "CSearchController.h"
#include "global-types-and-parameters.h"
#include "run-filter.h"

namespace {

// The number of N's in the stretch of `length` symbols from s on in the direction of `step`, up to the first other
// symbol; counted no further than one more than may be passed over.
std::ptrdiff_t N_run(const char* s, std::ptrdiff_t length, int step) {
  const std::ptrdiff_t enough = std::min(length, static_cast<std::ptrdiff_t>(global_Ns_allowed_in_a_row) + 1);
  std::ptrdiff_t run = 0;
  while (run < enough && s[run * step] == 'N') ++run;
  return run;
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
    const std::ptrdiff_t run = N_run(sat.pos_right, seq_end - sat.pos_right, 1);
    if (run > global_Ns_allowed_in_a_row) return;
    for (std::ptrdiff_t i = 0; i < run; ++i) {
      ++sat.pos_right;
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
    const std::ptrdiff_t run = N_run(sat.pos_left - 1, sat.pos_left - seq_begin, -1);
    if (run > global_Ns_allowed_in_a_row) return;
    for (std::ptrdiff_t i = 0; i < run; ++i) {
      --sat.pos_left;
      sat.bwd_unit_cursor = sat.unit_predecessor(sat.bwd_unit_cursor);
      ++sat.number_of_Ns;
    }
  }
}

bool is_perfection_in_range(const Csat& sat) {
  const float perfection = sat.perfection();
  return global_min_perfection <= perfection && perfection <= global_max_perfection;
}

// The starts of one unit length that can lead to a stored repeat, in order.
class CStarts {
 public:
  CStarts(const char* its_begin, const char* its_end, unsigned its_L)
      : end(its_end),
        L(static_cast<std::ptrdiff_t>(its_L)),
        filter(its_begin, its_end, its_L,
               CRunFilter::wanted_matches(its_L, CSearchController::minScores[its_L],
                                          CSearchController::minLengths[its_L]),
               Ns_are_neutral()),
        Ns_known_until(its_begin),
        one_symbol_end(its_begin) {}

  // The start to look at, at or behind p, or nullptr: kept by the filter, with a unit free of N's, and all that
  // `behind` lets pass. `behind(p)` returns p, or a later position if no start in front of that one is to be looked at.
  template <typename Behind>
  const char* first(const char* p, Behind behind) {
    for (;;) {
      p = filter.first_kept(p);
      if (p >= end - L) return nullptr;
      const char* next = behind(p);
      if (next == p) next = behind_Ns(p);
      if (next == p) return p;
      if (next >= end - L) return nullptr;
      p = next;
    }
  }

  // Behind all starts from p on whose units are L times the same symbol.
  const char* behind_one_symbol_units(const char* p) {
    if (p >= one_symbol_end) one_symbol_end = end_of_one_symbol_run(p, end);
    return one_symbol_end - p < L ? p : one_symbol_end - L + 1;
  }

 private:
  const char* end;
  std::ptrdiff_t L;
  CRunFilter filter;
  const char* Ns_known_until;  // there is no N in front of it that is not also in front of the last start
  const char* one_symbol_end;  // the end of the run of one symbol that the last start asked for lies in

  // Behind all starts from p on whose units hold an N of the same run of N's.
  const char* behind_Ns(const char* p) {
    if (p + L <= Ns_known_until) return p;
    const char* const from = std::max(p, Ns_known_until);
    const auto* const N = static_cast<const char*>(std::memchr(from, 'N', static_cast<std::size_t>(p + L - from)));
    Ns_known_until = N == nullptr ? p + L : end_of_one_symbol_run(N, end);
    return N == nullptr ? p : Ns_known_until;
  }
};

// The repeat found last, of which a record for each start inside it may be wanted.
class CFoundRepeat {
 public:
  // Whether [p, p + L) lies in the repeat. A start there finds the same repeat again: both units, free of N's, are
  // rotations of each other, and an extension depends on no more than the unit as a cycle.
  bool holds_unit(const char* p, std::ptrdiff_t L) const { return left <= p && right - p >= L; }

  void extend(Csat& sat, const char* seq_begin, const char* seq_end) {
    extend_exact_right(sat, seq_end);
    extend_exact_left(sat, seq_begin);
    sat.trim_Ns();
    left = sat.pos_left;
    right = sat.pos_right;
    score = sat.score;
    number_of_Ns = sat.number_of_Ns;
  }

  // One past its last symbol.
  const char* end() const { return right; }

  // Gives the record of another unit the ends that extending it would find.
  void copy_to(Csat& sat) const {
    const std::ptrdiff_t L = sat.unit_length();
    sat.pos_left = left;
    sat.pos_right = right;
    sat.fwd_unit_cursor = sat.unit_begin + (right - sat.unit_begin) % L;
    sat.bwd_unit_cursor = sat.unit_end - 1 - (sat.unit_end - left) % L;
    sat.score = score;
    sat.number_of_Ns = number_of_Ns;
  }

 private:
  const char* left = nullptr;
  const char* right = nullptr;
  int score = 0;
  int number_of_Ns = 0;
};

// Whether the search has come far enough, at p, to look at the clock again.
bool is_poll_due(const char*& polled, const char* p) {
  if (p - polled < 256) return false;
  polled = p;
  return true;
}

// Behind all starts from p on that lie inside what is covered, together with the position in front of them.
const char* behind_covered(const CAnchorSeq& mask, const char* p, unsigned L) {
  const char* const at_p = mask.mask_begin + (p - mask.seq_begin);
  if (at_p[0] == CAnchorSeq::covered && at_p[-1] == CAnchorSeq::covered) {
    const auto* const next = std::memchr(at_p, CAnchorSeq::anchor, static_cast<std::size_t>(mask.mask_end + 1 - at_p));
    return mask.seq_begin + (static_cast<const char*>(next) - mask.mask_begin);
  }
  return mask.may_anchor(p, L) ? p : p + 1;
}

}  // namespace

// One exact search: what its steps share.
struct CSearchController::exact_pass {
  CAnchorSeq mask;
  CSpareSat spare;
  bool is_for_seeds;

  exact_pass(const CSequence_Mol& sequence, bool for_seeds) : mask(sequence), is_for_seeds(for_seeds) {}
};

void CSearchController::exact_search_2() {
  exact_pass pass(sequence, false);
  run_exact_pass(pass);
}

void CSearchController::exact_search_for_seeds() {
  exact_pass pass(sequence, true);
  run_exact_pass(pass);
}

void CSearchController::run_exact_pass(exact_pass& pass) {
  unsigned L = global_min_unit_length;
  if (L == 1) {
    exact_search_of_unit_length_1(pass);
    L = 2;
  }
  for (; L <= global_max_unit_length; ++L) exact_search_of_unit_length(L, pass);
  result_list.sort();
}

bool CSearchController::is_wanted(const Csat& sat, exact_pass& pass) const {
  return !pass.is_for_seeds || may_be_accepted(sat);
}

// Whether each start inside a repeat that is not covered gets a record of its own, and not the first alone. The records
// differ in the rotation of their unit and follow each other in the sorted list, before and after an extension. If
// overlaps are removed, the first outlives the others: same ends, same score, and what hides one of them hides all. If
// not, they count as far as they are reported.
bool CSearchController::wants_every_start(const Csat& sat, const exact_pass& pass) {
  return !global_remove_mostly_hidden && (pass.is_for_seeds || Csat::is_reported_perfection(sat.perfection()));
}

void CSearchController::exact_search_of_unit_length_1(exact_pass& pass) {
  if (sequence.symbols.length < 2) return;
  CStarts starts(seq_begin(), seq_end(), 1);
  CFoundRepeat found;
  const auto nothing_behind = [](const char* p) { return p; };
  const char* polled = seq_begin();
  for (const char* a = seq_begin(); (a = starts.first(a, nothing_behind)) != nullptr; a = found.end()) {
    if (is_poll_due(polled, a)) report_progress(1);
    Csat& sat = pass.spare.take(a, a + 1);
    found.extend(sat, seq_begin(), seq_end());
    if (passes_thresholds(sat) && is_wanted(sat, pass)) pass.spare.move_to(result_list);
  }
}

void CSearchController::exact_search_of_unit_length(unsigned L, exact_pass& pass) {
  if (L == 0 || L >= sequence.symbols.length) return;
  report_progress(L);
  CStarts starts(seq_begin(), seq_end(), L);
  CFoundRepeat found;
  const auto behind = [&](const char* p) {
    const char* const next = starts.behind_one_symbol_units(p);
    return next == p ? behind_covered(pass.mask, p, L) : next;
  };
  const char* polled = seq_begin();
  for (const char* p = seq_begin(); (p = starts.first(p, behind)) != nullptr;) {
    if (is_poll_due(polled, p)) report_progress(L);
    Csat& sat = pass.spare.take(p, p + L);
    const bool is_known = found.holds_unit(p, L);
    if (is_known) {
      found.copy_to(sat);
    } else {
      found.extend(sat, seq_begin(), seq_end());
    }
    const bool covers = passes_thresholds(sat) && passes_user_thresholds(sat) && is_perfection_in_range(sat);
    if (covers) pass.mask.cover(sat);
    // What one start inside the repeat finds, all others find again, unless it is covered.
    const bool is_kept = is_known || (passes_thresholds(sat) && is_wanted(sat, pass));
    const bool is_next_kept = is_kept && wants_every_start(sat, pass);
    if (is_kept) pass.spare.move_to(result_list);
    p = covers ? found.end() : is_next_kept ? p + 1 : found.end() - L + 1;
  }
}
