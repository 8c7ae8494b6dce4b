#include "CCandidateQueue.h"

#include <algorithm>
#include <bit>

const char* CCandidateQueue::first(unsigned its_L, const CAnchorSeq& its_mask) {
  L = its_L;
  mask = &its_mask;
  first_start = static_cast<std::size_t>(starts.begin - begin);
  const char* const last_followed = end - std::min<std::ptrdiff_t>(end - begin, L);
  after_starts = std::max(first_start, static_cast<std::size_t>(std::min(starts.end, last_followed) - begin));
  candidates =
      &filter.candidates(its_L, [this](std::size_t in_word, std::uint64_t bits) { return admitted_of(in_word, bits); });
  count = given = 0;
  batch_end = first_start;
  has_mask_changed = false;
  run_end = 0;
  return next(false);
}

const char* CCandidateQueue::next(bool was_accepted) {
  if (was_accepted) {
    has_mask_changed = true;
    walk_from(static_cast<std::size_t>(last_given - begin) + 1);
  }
  do {
    last_given = has_mask_changed ? next_admitted_of_batch() : next_tested();
    if (last_given != nullptr) return last_given;
  } while (collect());
  return nullptr;
}

// Fills the next batch. Returns false when the mask admits no more.
bool CCandidateQueue::collect() {
  count = given = 0;
  has_mask_changed = false;
  walk_from(batch_end);
  while (count != tested.size()) {
    const std::size_t p = next_admitted();
    if (p == after_starts) {
      batch_end = after_starts;
      break;
    }
    const std::size_t unit = first_unit_from(p);
    if (unit == p) {
      tested[count++] = begin + p;
      batch_end = p + 1;
    } else {
      batch_end = std::min(unit, after_starts);
      walk_from(batch_end);
    }
  }
  kept = has_tighter_test ? filter.still_candidates(tested.data(), count) : ~std::uint64_t{0};
  return count != 0;
}

const char* CCandidateQueue::next_tested() {
  while (given != count && (kept >> given & 1) == 0) ++given;
  if (given == count) return nullptr;
  has_passed = has_tighter_test && filter.has_tighter_test();
  return tested[given++];
}

const char* CCandidateQueue::next_admitted_of_batch() {
  for (std::size_t p = next_admitted(); p < batch_end; p = next_admitted()) {
    while (given != count && tested[given] < begin + p) ++given;
    const bool is_tested = given != count && tested[given] == begin + p;
    if (is_tested && (kept >> given & 1) == 0) continue;
    has_passed = is_tested && has_tighter_test && filter.has_tighter_test();
    return begin + p;
  }
  return nullptr;
}

void CCandidateQueue::walk_from(std::size_t p) {
  word = p / 64;
  left = p < after_starts ? admitted(word) & ~std::uint64_t{0} << p % 64 : 0;
}

// The next candidate of the walk, or after_starts.
std::size_t CCandidateQueue::next_admitted() {
  while (left == 0) {
    const std::size_t from = 64 * (word + 1);
    if (from >= after_starts) return after_starts;
    word = candidates->next(from) / 64;
    if (64 * word >= after_starts) return after_starts;
    left = admitted(word);
  }
  const std::size_t p = 64 * word + static_cast<std::size_t>(std::countr_zero(left));
  left &= left - 1;
  return p;
}

// More than it pays to look up one by one.
bool CCandidateQueue::are_many(std::uint64_t bits) {
  for (int few = 4; few > 0; --few) bits &= bits - 1;
  return bits != 0;
}

// Of the bits of a word, those of starts that the mask admits.
std::uint64_t CCandidateQueue::admitted_of(std::size_t in_word, std::uint64_t bits) const {
  const std::size_t p = 64 * in_word;
  if (p >= after_starts || p + 64 <= first_start) return 0;
  if (p < first_start) bits &= ~std::uint64_t{0} << (first_start - p);
  if (after_starts - p < 64) bits &= ~(~std::uint64_t{0} << (after_starts - p));
  if (are_many(bits) && p >= first_start && after_starts - p >= 64) {
    return bits & mask->may_anchor_64(begin + p, L);
  }
  for (std::uint64_t rest = bits; rest != 0; rest &= rest - 1) {
    const char* const candidate = begin + p + std::countr_zero(rest);
    if (!mask->may_anchor(candidate, L)) bits &= ~(rest & -rest);
  }
  return bits;
}

// The first position from p on whose unit does not begin with N and is more than one symbol repeated, as far as the run
// of equal symbols at p tells. Such runs may be long.
std::size_t CCandidateQueue::first_unit_from(std::size_t p) {
  const char* const symbol = begin + p;
  const bool is_N = *symbol == 'N';
  if (!is_N && (L == 1 || symbol[1] != *symbol)) return p;
  if (p >= run_end) {
    const char* const other = std::find_if(symbol, end, [symbol](char c) { return c != *symbol; });
    run_end = static_cast<std::size_t>(other - begin);
  }
  if (is_N) return run_end;
  return run_end - p >= L ? run_end - L + 1 : p;
}
