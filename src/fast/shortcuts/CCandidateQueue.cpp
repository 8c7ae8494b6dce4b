#include "CCandidateQueue.h"

const char* CCandidateQueue::first(unsigned its_L, const CAnchorSeq& its_mask) {
  L = static_cast<std::ptrdiff_t>(its_L);
  mask = &its_mask;
  candidates = &filter.candidates(its_L);
  position = static_cast<std::size_t>(starts.begin - begin);
  count = 0;
  given = 0;
  return next(false);
}

const char* CCandidateQueue::next(bool was_accepted) {
  if (was_accepted) has_mask_changed = true;
  do {
    while (given != count) {
      const char* const p = collected[given++];
      const bool is_tested = given_tested != tested_count && tested[given_tested] == p;
      const bool is_wanted = is_tested ? (kept >> given_tested & 1) != 0 : has_mask_changed;
      if (is_tested) ++given_tested;
      if (!is_wanted) continue;
      has_passed = is_tested && has_tighter_test && filter.has_tighter_test();
      return p;
    }
  } while (collect());
  return nullptr;
}

// Fills the next batch. Returns false when there is nothing left to fill it with.
bool CCandidateQueue::collect() {
  count = tested_count = given = given_tested = 0;
  has_mask_changed = false;
  for (const char* p = next_position(); p != nullptr; p = next_position()) {
    if (mask->may_anchor(p, static_cast<unsigned>(L))) {
      if (*p == 'N') continue;
      tested[tested_count++] = p;
    }
    collected[count++] = p;
    if (is_full()) break;
  }
  kept = has_tighter_test ? filter.still_candidates(tested.data(), tested_count) : ~std::uint64_t{0};
  return count != 0;
}

const char* CCandidateQueue::next_position() {
  const char* const p = begin + candidates->next(position);
  position = static_cast<std::size_t>(p - begin) + 1;
  return p < starts.end && end - p > L ? p : nullptr;
}
