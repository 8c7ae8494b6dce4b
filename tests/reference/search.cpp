#include "search.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "parameters.h"

std::vector<int> CSearchController::minScores_user;
std::vector<int> CSearchController::minLengths_user;
std::vector<int> CSearchController::minScores_intern;
std::vector<int> CSearchController::minLengths_intern;
const std::vector<int>* CSearchController::minScores;
const std::vector<int>* CSearchController::minLengths;

namespace {

int saturated(float value) {
  if (value >= 2147483648.0f) return 2147483647;
  if (value < -2147483648.0f) return -2147483647 - 1;
  return static_cast<int>(value);
}

int threshold(int constant, int offset, float slope, unsigned k) {
  return std::max(constant, saturated(ceilf(static_cast<float>(offset) + static_cast<float>(k) * slope)));
}

const char* one_forward(const char* cursor, const char* unit_begin, const char* unit_end) {
  ++cursor;
  return cursor == unit_end ? unit_begin : cursor;
}

const char* one_back(const char* cursor, const char* unit_begin, const char* unit_end) {
  return cursor == unit_begin ? unit_end - 1 : cursor - 1;
}

void advance_fwd_cursor(Csat& sat) {
  sat.fwd_unit_cursor = one_forward(sat.fwd_unit_cursor, sat.unit_begin, sat.unit_end);
}

void move_back_bwd_cursor(Csat& sat) {
  sat.bwd_unit_cursor = one_back(sat.bwd_unit_cursor, sat.unit_begin, sat.unit_end);
}

// The number of N's from s up to end.
std::ptrdiff_t N_run_forward(const char* s, const char* end) {
  const char* p = s;
  while (p != end && *p == 'N') ++p;
  return p - s;
}

// The number of N's that end just before s, down to begin.
std::ptrdiff_t N_run_backward(const char* s, const char* begin) {
  const char* p = s;
  while (p != begin && p[-1] == 'N') --p;
  return s - p;
}

void trim_Ns(Csat& sat) {
  while (sat.pos_right[-1] == 'N') {
    --sat.pos_right;
    --sat.number_of_Ns;
    sat.fwd_unit_cursor = one_back(sat.fwd_unit_cursor, sat.unit_begin, sat.unit_end);
  }
  while (*sat.pos_left == 'N') {
    ++sat.pos_left;
    --sat.number_of_Ns;
    sat.bwd_unit_cursor = one_forward(sat.bwd_unit_cursor, sat.unit_begin, sat.unit_end);
  }
}

bool all_symbols_equal(const char* begin, const char* end) {
  for (const char* p = begin; p != end; ++p)
    if (*p != *begin) return false;
  return true;
}

// i is the position of the candidate unit, L its length.
bool may_anchor(const char* m, std::ptrdiff_t i, std::ptrdiff_t L) {
  return (m[i] == 'a' && (m[i + L - 1] == 'a' || m[i + L] == 'a')) || (m[i - 1] == 'a' && m[i + L - 1] == 'a');
}

// Closes the repeat's region, except at its edits.
void blank_mask(const Csat& sat, char* m, const char* seq_begin) {
  for (const char* p = sat.pos_left; p != sat.pos_right; ++p) m[p - seq_begin] = ' ';
  for (const auto& [position, letter] : sat.missense) m[position - seq_begin] = 'a';
}

// The record of the next candidate: the one that the last candidate left, or a new one.
Csat& take_record(spare_record& spare, const char* unit_begin, const char* unit_end) {
  if (spare.empty()) spare.emplace_back();
  spare.back().set_up(unit_begin, unit_end);
  return spare.back();
}

bool lessThan_sat(const Csat& a, const Csat& b) {
  return a.pos_left < b.pos_left || (a.pos_left == b.pos_left && a.pos_right < b.pos_right);
}

// ---- exact extension -------------------------------------------------------------------------

void extend_exact_right(Csat& sat, const char* seq_end) {
  while (sat.pos_right != seq_end) {
    if (*sat.pos_right == *sat.fwd_unit_cursor) {
      ++sat.score;
      ++sat.pos_right;
      advance_fwd_cursor(sat);
    } else if (*sat.pos_right == 'N' && global_Ns_allowed_in_a_row > 0 && !global_treat_Ns_as_missense) {
      const std::ptrdiff_t run = N_run_forward(sat.pos_right, seq_end);
      if (run > global_Ns_allowed_in_a_row) return;
      for (std::ptrdiff_t i = 0; i < run; ++i) {
        ++sat.pos_right;
        advance_fwd_cursor(sat);
        ++sat.number_of_Ns;
      }
    } else
      return;
  }
}

void extend_exact_left(Csat& sat, const char* seq_begin) {
  while (sat.pos_left != seq_begin) {
    if (sat.pos_left[-1] == *sat.bwd_unit_cursor) {
      ++sat.score;
      --sat.pos_left;
      move_back_bwd_cursor(sat);
    } else if (sat.pos_left[-1] == 'N' && global_Ns_allowed_in_a_row > 0 && !global_treat_Ns_as_missense) {
      const std::ptrdiff_t run = N_run_backward(sat.pos_left, seq_begin);
      if (run > global_Ns_allowed_in_a_row) return;
      for (std::ptrdiff_t i = 0; i < run; ++i) {
        --sat.pos_left;
        move_back_bwd_cursor(sat);
        ++sat.number_of_Ns;
      }
    } else
      return;
  }
}

// ---- imperfect extension ---------------------------------------------------------------------

// Scores are compared in 64 bits: penalties and the score reduction may be any 32-bit numbers. A
// score that passed the comparison with the bound fits 32 bits again.
long long lower_bound_of_score(int best, int L) {
  return std::max<long long>(static_cast<long long>(best) - global_maximum_scorereduction, -L) -
         global_prefer_longer_repeat;
}

bool edit_is_admissible(int score, int penalty, long long lower) {
  return static_cast<long long>(score) + penalty > lower;
}

// The highest score reachable from here; s is the next symbol, u the unit symbol it must equal.
int extend_imperfect_forward_leap_ahead(const char* s, const char* u, const char* unit_begin, const char* unit_end,
                                        int score, int L, std::uint8_t depth, const char* seq_end, int best) {
  if (s == seq_end) return score;
  for (;;) {
    if (*s == *u) {
      ++score;
      ++s;
      u = one_forward(u, unit_begin, unit_end);
    } else if (*s == 'N' && global_Ns_allowed_in_a_row != 0 && !global_treat_Ns_as_missense) {
      int chunk = 0;
      do {
        ++s;
        u = one_forward(u, unit_begin, unit_end);
        ++chunk;
      } while (s != seq_end && *s == 'N' && chunk < global_Ns_allowed_in_a_row);
    } else
      break;
    if (s == seq_end) return score;
  }
  if (depth == global_maximum_recursion_depth) return score;
  best = std::max(best, score);
  const long long lower = lower_bound_of_score(best, L);
  const std::uint8_t next_depth = static_cast<std::uint8_t>(depth + 1);
  const char* const u_advanced = one_forward(u, unit_begin, unit_end);
  int value = -L - 1;
  char chosen = 0;
  if (edit_is_admissible(score, global_mismatch_score, lower)) {
    value = extend_imperfect_forward_leap_ahead(s + 1, u_advanced, unit_begin, unit_end, score + global_mismatch_score,
                                                L, next_depth, seq_end, best);
    chosen = 'M';
  }
  if (edit_is_admissible(score, global_indel_score, lower)) {
    int v = extend_imperfect_forward_leap_ahead(s + 1, u, unit_begin, unit_end, score + global_indel_score, L,
                                                next_depth, seq_end, best);
    if (v > value) {
      value = v;
      chosen = 'I';
    }
    v = extend_imperfect_forward_leap_ahead(s, u_advanced, unit_begin, unit_end, score + global_indel_score, L,
                                            next_depth, seq_end, best);
    if (v > value) {
      value = v;
      chosen = 'D';
    }
  }
  return chosen == 0 ? score : std::max(score, value);
}

// The mirror image; s is the left end so far, u the unit symbol that s[-1] must equal.
int extend_imperfect_backward_leap_ahead(const char* s, const char* u, const char* unit_begin, const char* unit_end,
                                         int score, int L, std::uint8_t depth, const char* seq_begin, int best) {
  if (s == seq_begin) return score;
  for (;;) {
    if (s[-1] == *u) {
      ++score;
      --s;
      u = one_back(u, unit_begin, unit_end);
    } else if (s[-1] == 'N' && global_Ns_allowed_in_a_row != 0 && !global_treat_Ns_as_missense) {
      int chunk = 0;
      do {
        --s;
        u = one_back(u, unit_begin, unit_end);
        ++chunk;
      } while (s != seq_begin && s[-1] == 'N' && chunk < global_Ns_allowed_in_a_row);
    } else
      break;
    if (s == seq_begin) return score;
  }
  if (depth == global_maximum_recursion_depth) return score;
  best = std::max(best, score);
  const long long lower = lower_bound_of_score(best, L);
  const std::uint8_t next_depth = static_cast<std::uint8_t>(depth + 1);
  const char* const u_back = one_back(u, unit_begin, unit_end);
  int value = -L - 1;
  char chosen = 0;
  if (edit_is_admissible(score, global_mismatch_score, lower)) {
    value = extend_imperfect_backward_leap_ahead(s - 1, u_back, unit_begin, unit_end, score + global_mismatch_score, L,
                                                 next_depth, seq_begin, best);
    chosen = 'M';
  }
  if (edit_is_admissible(score, global_indel_score, lower)) {
    int v = extend_imperfect_backward_leap_ahead(s - 1, u, unit_begin, unit_end, score + global_indel_score, L,
                                                 next_depth, seq_begin, best);
    if (v > value) {
      value = v;
      chosen = 'I';
    }
    v = extend_imperfect_backward_leap_ahead(s, u_back, unit_begin, unit_end, score + global_indel_score, L, next_depth,
                                             seq_begin, best);
    if (v > value) {
      value = v;
      chosen = 'D';
    }
  }
  return chosen == 0 ? score : std::max(score, value);
}

// The first valued alternative is taken; a later one replaces it only if it is strictly better.
void consider(char edit, int v, char& chosen, int& value) {
  if (chosen == 0 || v > value) {
    chosen = edit;
    value = v;
  }
}

void extend_imperfect_forward(Csat& sat, const char* seq_end) {
  const int P = global_prefer_longer_repeat;
  const int L = sat.unit_length();
  Csat snapshot = sat;
  int best = sat.score;
  for (;;) {
    if (sat.pos_right == seq_end) {
      if (!(sat.score > best - P))  // end rule
        sat = snapshot;
      return;
    }
    if (*sat.pos_right == *sat.fwd_unit_cursor) {
      ++sat.score;
      ++sat.pos_right;
      advance_fwd_cursor(sat);
      continue;
    }
    if (*sat.pos_right == 'N' && global_Ns_allowed_in_a_row != 0 && !global_treat_Ns_as_missense) {
      const std::ptrdiff_t run = N_run_forward(sat.pos_right, seq_end);
      if (run > global_Ns_allowed_in_a_row) {
        if (!(sat.score > best - P))  // end rule
          sat = snapshot;
        return;
      }
      for (std::ptrdiff_t i = 0; i < run; ++i) {
        advance_fwd_cursor(sat);
        ++sat.pos_right;
        ++sat.number_of_Ns;
      }
      continue;
    }
    // A mismatch point.
    if (sat.score > best - P) {
      snapshot = sat;
      best = sat.score;
    }
    const long long lower = lower_bound_of_score(best, L);
    const std::uint8_t d = static_cast<std::uint8_t>(sat.recursion_depth + 1);
    const char* const cursor = sat.fwd_unit_cursor;
    const char* const cursor_advanced = one_forward(cursor, sat.unit_begin, sat.unit_end);
    char chosen = 0;
    int value = 0;
    if (edit_is_admissible(sat.score, global_mismatch_score, lower))
      consider('M',
               extend_imperfect_forward_leap_ahead(sat.pos_right + 1, cursor_advanced, sat.unit_begin, sat.unit_end,
                                                   sat.score + global_mismatch_score, L, d, seq_end, best),
               chosen, value);
    if (edit_is_admissible(sat.score, global_indel_score, lower)) {
      consider('I',
               extend_imperfect_forward_leap_ahead(sat.pos_right + 1, cursor, sat.unit_begin, sat.unit_end,
                                                   sat.score + global_indel_score, L, d, seq_end, best),
               chosen, value);
      consider('D',
               extend_imperfect_forward_leap_ahead(sat.pos_right, cursor_advanced, sat.unit_begin, sat.unit_end,
                                                   sat.score + global_indel_score, L, d, seq_end, best),
               chosen, value);
    }
    if (chosen == 0) {
      if (!(sat.score >= best - P))  // break rule
        sat = snapshot;
      return;
    }
    sat.missense.emplace_back(sat.pos_right, chosen);
    if (chosen == 'M') {
      sat.score += global_mismatch_score;
      ++sat.pos_right;
      ++sat.mismatches;
      advance_fwd_cursor(sat);
    } else if (chosen == 'I') {
      sat.score += global_indel_score;
      ++sat.pos_right;
      ++sat.insertions;
    } else {
      sat.score += global_indel_score;
      ++sat.deletions;
      advance_fwd_cursor(sat);
    }
  }
}

void extend_imperfect_backward(Csat& sat, const char* seq_begin) {
  const int P = global_prefer_longer_repeat;
  const int L = sat.unit_length();
  Csat snapshot = sat;
  int best = sat.score;
  for (;;) {
    if (sat.pos_left == seq_begin) {
      if (!(sat.score > best - P))  // end rule
        sat = snapshot;
      return;
    }
    if (sat.pos_left[-1] == *sat.bwd_unit_cursor) {
      ++sat.score;
      --sat.pos_left;
      move_back_bwd_cursor(sat);
      continue;
    }
    if (sat.pos_left[-1] == 'N' && global_Ns_allowed_in_a_row != 0 && !global_treat_Ns_as_missense) {
      const std::ptrdiff_t run = N_run_backward(sat.pos_left, seq_begin);
      if (run > global_Ns_allowed_in_a_row) {
        if (!(sat.score > best - P))  // end rule
          sat = snapshot;
        return;
      }
      for (std::ptrdiff_t i = 0; i < run; ++i) {
        move_back_bwd_cursor(sat);
        --sat.pos_left;
        ++sat.number_of_Ns;
      }
      continue;
    }
    // A mismatch point.
    if (sat.score > best - P) {
      snapshot = sat;
      best = sat.score;
    }
    const long long lower = lower_bound_of_score(best, L);
    const std::uint8_t d = static_cast<std::uint8_t>(sat.recursion_depth + 1);
    const char* const cursor = sat.bwd_unit_cursor;
    const char* const cursor_back = one_back(cursor, sat.unit_begin, sat.unit_end);
    char chosen = 0;
    int value = 0;
    if (edit_is_admissible(sat.score, global_mismatch_score, lower))
      consider('M',
               extend_imperfect_backward_leap_ahead(sat.pos_left - 1, cursor_back, sat.unit_begin, sat.unit_end,
                                                    sat.score + global_mismatch_score, L, d, seq_begin, best),
               chosen, value);
    if (edit_is_admissible(sat.score, global_indel_score, lower)) {
      consider('I',
               extend_imperfect_backward_leap_ahead(sat.pos_left - 1, cursor, sat.unit_begin, sat.unit_end,
                                                    sat.score + global_indel_score, L, d, seq_begin, best),
               chosen, value);
      consider('D',
               extend_imperfect_backward_leap_ahead(sat.pos_left, cursor_back, sat.unit_begin, sat.unit_end,
                                                    sat.score + global_indel_score, L, d, seq_begin, best),
               chosen, value);
    }
    if (chosen == 0) {
      if (!(sat.score >= best - P))  // break rule
        sat = snapshot;
      return;
    }
    if (chosen == 'M') {
      sat.missense.emplace_back(sat.pos_left - 1, 'M');
      sat.score += global_mismatch_score;
      --sat.pos_left;
      move_back_bwd_cursor(sat);
      ++sat.mismatches;
    } else if (chosen == 'I') {
      sat.missense.emplace_back(sat.pos_left - 1, 'I');
      sat.score += global_indel_score;
      --sat.pos_left;
      ++sat.insertions;
    } else {
      sat.missense.emplace_back(sat.pos_left, 'D');
      sat.score += global_indel_score;
      move_back_bwd_cursor(sat);
      ++sat.deletions;
    }
  }
}

}  // namespace

// ---- the record ------------------------------------------------------------------------------

void Csat::set_up(const char* begin, const char* end) {
  pos_left = fwd_unit_cursor = unit_begin = begin;
  pos_right = unit_end = end;
  bwd_unit_cursor = end - 1;
  score = mismatches = insertions = deletions = number_of_Ns = 0;
  recursion_depth = 0;
  missense.clear();
}

float Csat::perfection() const {
  const int P = length();
  int matches = P - mismatches - insertions - deletions;
  int divisor = P;
  switch (global_N_and_perfection_mode) {
    case 0:
      matches -= number_of_Ns;
      break;
    case 1:
      matches -= number_of_Ns;
      divisor -= number_of_Ns;
      break;
    case 2:
      break;
    default:
      exit(2);
  }
  return static_cast<float>(matches) / static_cast<float>(divisor) * 100.0f;
}

// ---- the controller --------------------------------------------------------------------------

CSearchController::CSearchController(unsigned number, const CSequence_Mol& seq)
    : sequence_number(number), sequence(seq), seq_begin(seq.symbols.data()), seq_end(seq_begin + seq.symbols.size()) {
  if (minScores_user.empty())
    for (unsigned k = 0; k <= global_max_unit_length; ++k) {
      minScores_user.push_back(threshold(global_min_score, global_min_score_a, global_min_score_bx, k));
      minLengths_user.push_back(threshold(global_min_length, global_min_length_a, global_min_length_bx, k));
      minScores_intern.push_back(k < 4 ? 4 : static_cast<int>(k));
      minLengths_intern.push_back(0);
    }
  minScores = &minScores_user;
  minLengths = &minLengths_user;
}

bool CSearchController::passes_thresholds(const Csat& sat) const {
  const std::size_t L = static_cast<std::size_t>(sat.unit_length());
  return sat.score >= (*minScores)[L] && sat.length() >= (*minLengths)[L];
}

void CSearchController::report_progress_if_due(unsigned unit_length) const {
  if (check_report_status()) report_status(sequence_number, sequence.short_name.c_str(), unit_length, 'r');
}

// ---- exact mode ------------------------------------------------------------------------------

void CSearchController::exact_search_2() {
  CAnchorSeq anchors(sequence.symbols.size());
  spare_record spare;
  unsigned L = global_min_unit_length;
  if (L == 1) {
    exact_mononucleotide_pass(spare);
    L = 2;
  }
  for (; L <= global_max_unit_length; ++L)
    if (L != 0 && seq_end - seq_begin > static_cast<std::ptrdiff_t>(L)) exact_pass(L, anchors, spare);
  result_list.sort(lessThan_sat);
}

void CSearchController::exact_mononucleotide_pass(spare_record& spare) {
  report_progress_if_due(1);
  const char* a = std::find_if(seq_begin, seq_end, [](char c) { return c != 'N'; });
  while (seq_end - a > 1) {
    if ((a - seq_begin) % 256 == 0) report_progress_if_due(1);
    Csat& sat = take_record(spare, a, a + 1);
    extend_exact_right(sat, seq_end);
    extend_exact_left(sat, seq_begin);
    trim_Ns(sat);
    if (passes_thresholds(sat)) {
      a = sat.pos_right;
      result_list.splice(result_list.end(), spare);
    } else
      ++a;
    while (a != seq_end && *a == 'N') ++a;
  }
}

void CSearchController::exact_pass(unsigned unit_length, CAnchorSeq& anchors, spare_record& spare) {
  const std::ptrdiff_t L = unit_length;
  char* const m = anchors.mask_begin();
  const char* next_N = std::find(seq_begin, seq_end, 'N');
  report_progress_if_due(unit_length);
  for (const char* p = seq_begin; seq_end - p > L; ++p) {
    if ((p - seq_begin) % 256 == 0) report_progress_if_due(unit_length);
    if (next_N < p) next_N = std::find(p, seq_end, 'N');
    if (!may_anchor(m, p - seq_begin, L)) continue;
    if (p + L > next_N) continue;
    if (all_symbols_equal(p, p + L)) continue;
    Csat& sat = take_record(spare, p, p + L);
    extend_exact_right(sat, seq_end);
    extend_exact_left(sat, seq_begin);
    trim_Ns(sat);
    if (passes_thresholds(sat)) {
      if (sat.score >= minScores_user[unit_length] && sat.length() >= minLengths_user[unit_length]) {
        const float perfection = sat.perfection();
        if (global_min_perfection <= perfection && perfection <= global_max_perfection) blank_mask(sat, m, seq_begin);
      }
      result_list.splice(result_list.end(), spare);
    }
  }
}

// ---- extend-exact mode -----------------------------------------------------------------------

void CSearchController::search_exact_and_extend_to_imperfect_repeats() {
  fprintf(stderr, "  Searching for exact repeats.\n");
  fflush(stderr);
  minScores = &minScores_intern;
  minLengths = &minLengths_intern;
  exact_search_2();
  minScores = &minScores_user;
  minLengths = &minLengths_user;
  fprintf(stderr, "  Extend exact to imperfect repeats.\n");
  fflush(stderr);
  while (!result_list.empty()) {
    Csat& sat = result_list.front();
    extend_imperfect_forward(sat, seq_end);
    extend_imperfect_backward(sat, seq_begin);
    trim_Ns(sat);
    if (passes_thresholds(sat)) {
      std::sort(sat.missense.begin(), sat.missense.end());
      work_list.splice(work_list.end(), result_list, result_list.begin());
    } else
      result_list.pop_front();
  }
  work_list.sort(lessThan_sat);
}

// ---- imperfect mode --------------------------------------------------------------------------

void CSearchController::complete_imperfect_search() {
  CAnchorSeq anchors(sequence.symbols.size());
  unsigned L = global_min_unit_length;
  if (L == 1) {
    unit_len_1_complete_imperfect_search(anchors);
    anchors.reset();
    L = 2;
  }
  for (; L <= global_max_unit_length; ++L)
    if (L != 0) one_unit_len_complete_imperfect_search(L, anchors);
  work_list.sort(lessThan_sat);
}

void CSearchController::unit_len_1_complete_imperfect_search(CAnchorSeq& anchors) {
  spare_record spare;
  const char* const m = anchors.mask_begin();
  const auto is_not_N = [](char c) { return c != 'N'; };
  const char* p = std::find_if(seq_begin, seq_end, is_not_N);
  while (seq_end - p > 1) {
    if ((p - seq_begin) % 256 == 0) report_progress_if_due(1);
    if (may_anchor(m, p - seq_begin, 1)) extend_and_keep_imperfect(p, 1, anchors, spare);
    p = std::find_if(p + 1, seq_end, is_not_N);
  }
}

void CSearchController::one_unit_len_complete_imperfect_search(unsigned unit_length, CAnchorSeq& anchors) {
  spare_record spare;
  const std::ptrdiff_t L = unit_length;
  const char* const m = anchors.mask_begin();
  const char* next_N = std::find(seq_begin, seq_end, 'N');
  if (seq_end - seq_begin <= L) return;
  report_progress_if_due(unit_length);
  const char* p = seq_begin;
  while (seq_end - p > L) {
    if (next_N < p) next_N = std::find(p, seq_end, 'N');
    if (may_anchor(m, p - seq_begin, L) && !(p <= next_N && next_N < p + L) && !all_symbols_equal(p, p + L))
      extend_and_keep_imperfect(p, unit_length, anchors, spare);
    ++p;
    if ((p - seq_begin) % 256 == 0) report_progress_if_due(unit_length);
  }
}

void CSearchController::extend_and_keep_imperfect(const char* p, unsigned unit_length, CAnchorSeq& anchors,
                                                  spare_record& spare) {
  Csat& sat = take_record(spare, p, p + unit_length);
  extend_imperfect_forward(sat, seq_end);
  extend_imperfect_backward(sat, seq_begin);
  trim_Ns(sat);
  if (passes_thresholds(sat)) {
    std::sort(sat.missense.begin(), sat.missense.end());
    blank_mask(sat, anchors.mask_begin(), seq_begin);
    work_list.splice(work_list.end(), spare);
  }
}

// ---- overlap removal -------------------------------------------------------------------------

void CSearchController::remove_hidden(std::list<Csat>& list) {
  if (!global_remove_mostly_hidden || list.empty()) return;
  const auto span = [](const Csat& sat) { return static_cast<unsigned>(sat.pos_right - sat.pos_left); };
  const auto unit = [](const Csat& sat) { return static_cast<unsigned>(sat.unit_length()); };
  const auto overlap_of = [](const Csat& x, const Csat& y) {
    return static_cast<unsigned>(std::min(x.pos_right, y.pos_right) - y.pos_left);
  };
  auto A = list.begin();
  while (std::next(A) != list.end()) {
    auto B = std::next(A);
    if (B->pos_left >= A->pos_right || overlap_of(*A, *B) == 0) {
      A = B;
      continue;
    }
    bool A_removed = false;
    do {
      const unsigned overlap = overlap_of(*A, *B);
      const bool hidden = span(*A) < unit(*A) + overlap || span(*B) < unit(*B) + overlap;
      if (hidden && A->score < B->score) {
        A = list.erase(A);
        A_removed = true;
      } else if (hidden) {
        B = list.erase(B);
      } else {
        ++B;
      }
    } while (!A_removed && B != list.end() && A->pos_right > B->pos_left);
    if (!A_removed) {
      ++A;
      if (A == list.end()) return;
    }
  }
}
