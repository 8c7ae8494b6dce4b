// Set-up of the search: thresholds, construction.

#include "CSearchController.h"

#include <algorithm>
#include <cmath>
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

CSearchController::CSearchController(unsigned number, CSequence_Mol& record, search_progress its_progress)
    : sequence_number(number),
      sequence(record),
      result_list(sat_alloc),
      work_list(sat_alloc),
      progress(std::move(its_progress)) {
  build_if_missing(minScores_user,
                   [](unsigned k) { return threshold(k, global_min_score, global_min_score_a, global_min_score_bx); });
  build_if_missing(minLengths_user, [](unsigned k) {
    return threshold(k, global_min_length, global_min_length_a, global_min_length_bx);
  });
  build_if_missing(minScores_intern, [](unsigned k) { return k < 4 ? 4 : static_cast<int>(k); });
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

void CSearchController::report_progress(unsigned unit_length) {
  if (progress) progress(unit_length);
}

bool CSearchController::passes_thresholds(const Csat& sat) {
  const int L = sat.unit_length();
  return sat.score >= minScores[L] && sat.length() >= minLengths[L];
}

bool CSearchController::passes_user_thresholds(const Csat& sat) {
  const int L = sat.unit_length();
  return sat.score >= minScores_user[L] && sat.length() >= minLengths_user[L];
}
