// Imperfect mode: every position and unit length is tried as the seed of an imperfect repeat.

#include <algorithm>
#include <bit>
#include <cstring>

#include "CSearchController.h"
#include "candidate-filter.h"
#include "global-types-and-parameters.h"

namespace {

bool is_one_symbol(const char* begin, const char* end) {
  return std::all_of(begin + 1, end, [begin](char c) { return c == *begin; });
}

// Positions between two looks at the clock.
constexpr std::size_t positions_a_poll = 4096;

}  // namespace

void CSearchController::complete_imperfect_search(std::FILE* /*out*/) {
  CAnchorSeq mask(sequence);
  CCandidateFilter filter(seq_begin(), sequence.symbols.length, minScores);
  unsigned L = global_min_unit_length;
  if (L == 1) {
    unit_len_1_complete_imperfect_search(filter, mask, work_list);
    mask.free_all();
    L = 2;
  }
  for (; L <= global_max_unit_length; ++L) one_unit_len_complete_imperfect_search(L, filter, mask, work_list);
  work_list.sort();
}

// The unit must be followed by a symbol, hold no N and, but for L = 1, be more than one symbol repeated.
bool CSearchController::is_candidate(const char* p, unsigned L) const {
  if (seq_end() - p <= static_cast<std::ptrdiff_t>(L)) return false;
  if (std::memchr(p, 'N', L) != nullptr) return false;
  return L == 1 || !is_one_symbol(p, p + L);
}

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

// Tries all candidates that can be accepted, in ascending order. Few of those that the batch is given are left to be
// looked at as a whole; here only runs of N's are kept away from it.
void CSearchController::try_candidates(unsigned L, CCandidateFilter& filter, CAnchorSeq& mask, CsatContainer& found) {
  CSpareSat spare;
  const std::vector<std::uint64_t>& candidates = filter.candidates(L);
  CCandidateBatch batch(filter, [&](const char* p) { return try_candidate(p, L, mask, spare, found); });
  for (std::size_t word = 0; word < candidates.size(); ++word) {
    if (word % (positions_a_poll / 64) == 0) report_progress(L);
    for (std::uint64_t left = candidates[word]; left != 0; left &= left - 1) {
      const char* const p = seq_begin() + 64 * word + static_cast<unsigned>(std::countr_zero(left));
      if (seq_end() - p <= static_cast<std::ptrdiff_t>(L)) break;
      if (!mask.may_anchor(p, L)) {
        batch.add_refused(p);
      } else if (*p != 'N') {
        batch.add(p);
      }
    }
  }
  batch.finish();
}

// With L = 1 the anchor test is that the position itself is free.
void CSearchController::unit_len_1_complete_imperfect_search(CCandidateFilter& filter, CAnchorSeq& mask,
                                                             CsatContainer& found) {
  if (sequence.symbols.length < 2) return;
  try_candidates(1, filter, mask, found);
}

void CSearchController::one_unit_len_complete_imperfect_search(unsigned L, CCandidateFilter& filter, CAnchorSeq& mask,
                                                               CsatContainer& found) {
  if (L == 0 || L >= sequence.symbols.length) return;
  report_progress(L);
  // A unit of one symbol is a candidate in the pass for unit length 1 alone, which a minimum of 0 does not run.
  if (L > 1) try_candidates(L, filter, mask, found);
}
