// Imperfect mode: every position and unit length is tried as the seed of an imperfect repeat.

#include <algorithm>
#include <bit>

#include "CSearchController.h"
#include "fast/candidate-filter.h"
#include "global-types-and-parameters.h"

namespace {

const char* first_N(const char* from, const char* seq_end) { return std::find(from, seq_end, 'N'); }

bool is_one_symbol(const char* begin, const char* end) {
  return std::all_of(begin + 1, end, [begin](char c) { return c == *begin; });
}

// Positions between two looks at the clock.
constexpr std::size_t positions_a_poll = 4096;

}  // namespace

// Calls look_at for the candidates, in ascending order.
template <typename Look>
void CSearchController::for_each_candidate(const std::vector<std::uint64_t>& candidates, unsigned L, Look look_at) {
  for (std::size_t word = 0; word < candidates.size(); ++word) {
    if (word % (positions_a_poll / 64) == 0) report_progress(L);
    for (std::uint64_t left = candidates[word]; left != 0; left &= left - 1) {
      look_at(seq_begin() + 64 * word + static_cast<unsigned>(std::countr_zero(left)));
    }
  }
}

void CSearchController::complete_imperfect_search(std::FILE* /*out*/) {
  CAnchorSeq mask(sequence);
  CCandidateFilter filter(seq_begin(), sequence.symbols.length);
  unsigned L = global_min_unit_length;
  if (L == 1) {
    unit_len_1_complete_imperfect_search(filter, mask, work_list);
    mask.free_all();
    L = 2;
  }
  for (; L <= global_max_unit_length; ++L) one_unit_len_complete_imperfect_search(L, filter, mask, work_list);
  work_list.sort();
}

bool CSearchController::try_candidate(const char* p, unsigned L, CAnchorSeq& mask, CSpareSat& spare,
                                      CsatContainer& found) {
  if (!mask.may_anchor(p, L)) return false;
  Csat& sat = spare.take(p, p + L);
  if (!extend_imperfect(sat)) return false;
  sat.sort_missense();
  mask.cover(sat);
  spare.move_to(found);
  return true;
}

// With L = 1 the anchor test is that the position itself is free.
void CSearchController::unit_len_1_complete_imperfect_search(CCandidateFilter& filter, CAnchorSeq& mask,
                                                             CsatContainer& found) {
  if (sequence.symbols.length < 2) return;
  CSpareSat spare;
  CCandidateBatch batch(filter, [&](const char* p) { return try_candidate(p, 1, mask, spare, found); });
  for_each_candidate(filter.candidates(1, minScores[1]), 1, [&](const char* p) {
    if (p + 1 < seq_end() && *p != 'N') batch.add(p, mask.is_free(p));
  });
  batch.finish();
}

void CSearchController::one_unit_len_complete_imperfect_search(unsigned L, CCandidateFilter& filter, CAnchorSeq& mask,
                                                               CsatContainer& found) {
  if (L == 0 || L >= sequence.symbols.length) return;
  CSpareSat spare;
  const char* next_N = first_N(seq_begin(), seq_end());
  report_progress(L);
  CCandidateBatch batch(filter, [&](const char* p) { return try_candidate(p, L, mask, spare, found); });
  for_each_candidate(filter.candidates(L, minScores[L]), L, [&](const char* p) {
    if (p + L >= seq_end()) return;
    if (next_N < p) next_N = first_N(p, seq_end());
    if (p + L > next_N || is_one_symbol(p, p + L)) return;
    batch.add(p, mask.may_anchor(p, L));
  });
  batch.finish();
}
