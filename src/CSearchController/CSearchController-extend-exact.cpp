// Extend-exact mode: short perfect seeds, grown to imperfect repeats.

#include <algorithm>

#include "CSearchController.h"
#include "global-types-and-parameters.h"
#include "growth-bound.h"
#include "look-ahead.h"
#include "path-bound.h"
#include "unit-text.h"

namespace {

// The seed extended last. The starts inside a seed that is not covered give it again and again, each time with another
// rotation of its unit, and follow each other in the sorted list. An extension depends on the unit only as a cycle, so
// all of them end as the first did.
class CLastSeed {
 public:
  // Remembers a seed that is about to be extended.
  void set(const Csat& seed) {
    left = seed.pos_left;
    right = seed.pos_right;
    L = seed.unit_length();
  }

  bool is_like(const Csat& seed) const {
    return seed.pos_left == left && seed.pos_right == right && seed.unit_length() == L;
  }

  // Gives a seed like it what the extension made of it. The cursors are the same symbols of the cycle.
  static void copy_extension(const Csat& extended, Csat& seed) {
    const std::ptrdiff_t L = seed.unit_length();
    const std::ptrdiff_t rotation = seed.unit_begin - extended.unit_begin;
    const auto rotated = [&](const char* cursor) {
      const std::ptrdiff_t u = (cursor - extended.unit_begin - rotation) % L;
      return seed.unit_begin + (u < 0 ? u + L : u);
    };
    seed.pos_left = extended.pos_left;
    seed.pos_right = extended.pos_right;
    seed.fwd_unit_cursor = rotated(extended.fwd_unit_cursor);
    seed.bwd_unit_cursor = rotated(extended.bwd_unit_cursor);
    seed.score = extended.score;
    seed.mismatches = extended.mismatches;
    seed.insertions = extended.insertions;
    seed.deletions = extended.deletions;
    seed.number_of_Ns = extended.number_of_Ns;
    for (const auto& entry : extended.missense_entries()) seed.add_missense(entry.position, entry.symbol);
  }

 private:
  const char* left = nullptr;
  const char* right = nullptr;
  int L = 0;
};

}  // namespace

// Whether the seed need be stored: false when its extension cannot reach the user's score. An extension reads nothing
// that other seeds change, so a seed left out would be extended, rejected and leave no trace.
bool CSearchController::may_be_accepted(const Csat& seed) const {
  const int T = minScores_user[seed.unit_length()];
  if (seed.score >= T) return true;
  CPathBound bound(current_look_ahead_rules(), seq_begin(), seq_end());
  return bound.may_reach(seed, unit_text_of(seed), T);
}

// The extension of a seed as extend_imperfect makes it, without those of its sides that cannot grow.
bool CSearchController::extend_seed(Csat& sat) const {
  const CUnitText& unit = unit_text_of(sat);
  CGrowthBound bound(current_look_ahead_rules());
  const auto state_at = [&sat](const char* position, const char* cursor) {
    return extension_state{position, static_cast<int>(cursor - sat.unit_begin), sat.score};
  };
  if (bound.may_grow<rightwards>(state_at(sat.pos_right, sat.fwd_unit_cursor), unit, seq_end())) {
    extend_imperfect_forward(sat, seq_end());
  }
  if (bound.may_grow<leftwards>(state_at(sat.pos_left, sat.bwd_unit_cursor), unit, seq_begin())) {
    extend_imperfect_backward(sat, seq_begin() - 1);
  }
  sat.trim_Ns();
  return passes_thresholds(sat);
}

void CSearchController::search_exact_and_extend_to_imperfect_repeats() {
  std::fputs("  Searching for exact repeats.\n", stderr);
  std::fflush(stderr);
  minScores = minScores_intern;
  minLengths = minLengths_intern;
  exact_search_for_seeds();
  minScores = minScores_user;
  minLengths = minLengths_user;
  std::fputs("  Extend exact to imperfect repeats.\n", stderr);
  std::fflush(stderr);

  CLastSeed last;
  bool is_last_accepted = false;
  while (!result_list.records.empty()) {
    Csat& sat = *result_list.records.front();
    if (!last.is_like(sat)) {
      last.set(sat);
      is_last_accepted = extend_seed(sat);
      if (is_last_accepted) sat.sort_missense();
    } else if (is_last_accepted) {
      CLastSeed::copy_extension(*work_list.records.back(), sat);
    }
    if (is_last_accepted) {
      work_list.take_last(result_list, result_list.records.begin());
    } else {
      sat_alloc.records.splice(sat_alloc.records.end(), result_list.records, result_list.records.begin());
    }
  }
  work_list.sort();
}
