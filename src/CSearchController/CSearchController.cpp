// Set-up of the search: thresholds, construction.

#include "CSearchController.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "global-types-and-parameters.h"

int* CSearchController::minScores = nullptr;
int* CSearchController::minLengths = nullptr;
int* CSearchController::minScores_user = nullptr;
int* CSearchController::minLengths_user = nullptr;
int* CSearchController::minScores_intern = nullptr;
int* CSearchController::minLengths_intern = nullptr;

namespace {

int saturated(float value) {
  if (value >= 2147483648.0F) return std::numeric_limits<int>::max();
  if (value <= -2147483648.0F) return std::numeric_limits<int>::min();
  return static_cast<int>(value);
}

// The rule maximum(constant, offset + slope * unit length), formed in single precision and rounded up.
int threshold(unsigned k, int constant, int offset, float slope) {
  const float linear = std::ceil(static_cast<float>(offset) + static_cast<float>(k) * slope);
  return std::max(constant, saturated(linear));
}

template <typename Rule>
void build_if_missing(int*& array, Rule rule) {
  if (array != nullptr) return;
  int* const built = new int[static_cast<std::size_t>(global_max_unit_length) + 1];
  for (unsigned k = 0; k <= global_max_unit_length; ++k) built[k] = rule(k);
  array = built;
}

void release(int*& array) {
  delete[] array;
  array = nullptr;
}

}  // namespace

CSearchController::CSearchController(unsigned number, CSequence_Mol& record, const search_settings& its_settings,
                                     search_workspace& its_workspace, search_progress its_progress,
                                     search_stretch its_starts)
    : sequence_number(number),
      sequence(record),
      result_list(its_workspace.pool),
      work_list(its_workspace.pool),
      settings(its_settings),
      workspace(its_workspace),
      progress(std::move(its_progress)),
      starts(its_starts),
      shortcuts(its_workspace.shortcuts != nullptr ? *its_workspace.shortcuts : as_defined) {}

CSearchController::CSearchController(unsigned number, CSequence_Mol& record, std::unique_ptr<defaults> its_own)
    : CSearchController(number, record, its_own->settings, its_own->workspace) {
  own = std::move(its_own);
}

CSearchController::CSearchController(unsigned number, CSequence_Mol& record)
    : CSearchController(
          number, record,
          (make_minimum_arrays(), std::make_unique<defaults>(defaults{current_search_settings(), {sat_alloc}}))) {}

void CSearchController::make_minimum_arrays() {
  build_if_missing(minScores_user,
                   [](unsigned k) { return threshold(k, global_min_score, global_min_score_a, global_min_score_bx); });
  build_if_missing(minLengths_user, [](unsigned k) {
    return threshold(k, global_min_length, global_min_length_a, global_min_length_bx);
  });
  build_if_missing(minScores_intern, [](unsigned k) { return min_score_of_seeds(k); });
  build_if_missing(minLengths_intern, [](unsigned) { return 0; });
  minScores = minScores_user;
  minLengths = minLengths_user;
}

void CSearchController::reset_minimum_arrays() {
  release(minScores_user);
  release(minLengths_user);
  release(minScores_intern);
  release(minLengths_intern);
  minScores = nullptr;
  minLengths = nullptr;
}

// may_anchor looks at the position in front of a unit and at the one after it.
CAnchorSeq CSearchController::make_mask() const {
  const char* const from = first_start() == seq_begin() ? seq_begin() : first_start() - 1;
  const std::ptrdiff_t after = static_cast<std::ptrdiff_t>(settings.max_unit_length) + 1;
  const char* const to = seq_end() - after_starts() < after ? seq_end() : after_starts() + after;
  return {from, static_cast<unsigned>(to - from)};
}

bool CSearchController::is_reportable(const Csat& sat) const {
  const auto L = static_cast<unsigned>(sat.unit_length());
  return sat.score >= settings.min_scores[L] && sat.length() >= settings.min_lengths[L];
}

// The unit must be followed by a symbol, hold no N and, but for L = 1, be more than one symbol repeated.
bool CSearchController::is_candidate(const char* p, unsigned L) const {
  if (seq_end() - p <= static_cast<std::ptrdiff_t>(L)) return false;
  if (std::memchr(p, 'N', L) != nullptr) return false;
  return L == 1 || std::any_of(p + 1, p + L, [p](char c) { return c != *p; });
}

const CUnitText& CSearchController::unit_text_of(const Csat& sat) {
  workspace.unit.set(sat.unit_begin, sat.unit_end);
  return workspace.unit;
}
