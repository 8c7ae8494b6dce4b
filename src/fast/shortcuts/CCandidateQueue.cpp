#include "CCandidateQueue.h"

#include <algorithm>
#include <bit>

const char* CCandidateQueue::first(unsigned its_L, const CAnchorSeq& its_mask) {
  L = its_L;
  mask = &its_mask;
  first_start = static_cast<std::size_t>(starts.begin - begin);
  after_starts = after_starts_of(L);
  candidates = &filter.candidates(its_L, [this](unsigned any_L, std::size_t in_word, std::uint64_t bits) {
    return admitted_of(any_L, in_word, bits);
  });
  is_tested_again = has_tighter_test && filter.has_tighter_test();
  count = given = 0;
  batch_end = first_start;
  has_mask_changed = false;
  pairs_of_unit = L > 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << (L - 1)) - 1;
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
  while (count != tested.size() && has_admitted()) collect_from_word();
  batch_end = count == tested.size() ? static_cast<std::size_t>(tested.back() - begin) + 1 : after_starts;
  kept = is_tested_again ? filter.still_candidates(tested.data(), count) : ~std::uint64_t{0};
  return count != 0;
}

// Takes candidates from the word that the walk has come to, until it is left or the batch is full.
void CCandidateQueue::collect_from_word() {
  for (; left != 0 && count != tested.size(); left &= left - 1) {
    const std::size_t p = 64 * word + static_cast<std::size_t>(std::countr_zero(left));
    if (walks_past(p)) return;
    // The test reads it when the batch is full. By then it is in the cache.
    __builtin_prefetch(begin + p + 32);
    tested[count++] = begin + p;
  }
}

// Whether there is a change of the symbol soon after p inside the unit that begins there, which then is more than one
// symbol repeated.
bool CCandidateQueue::is_change_ahead(std::size_t p) const {
  const std::uint64_t ahead = changes[p / 64] >> p % 64 | changes[p / 64 + 1] << 1 << (63 - p % 64);
  return (ahead & pairs_of_unit) != 0;
}

const char* CCandidateQueue::next_tested() {
  while (given != count && (kept >> given & 1) == 0) ++given;
  if (given == count) return nullptr;
  has_passed = is_tested_again;
  return tested[given++];
}

const char* CCandidateQueue::next_admitted_of_batch() {
  for (std::size_t p = next_admitted(); p < batch_end; p = next_admitted()) {
    while (given != count && tested[given] < begin + p) ++given;
    const bool is_tested = given != count && tested[given] == begin + p;
    if (is_tested && (kept >> given & 1) == 0) continue;
    if (walks_past(p)) continue;
    has_passed = is_tested && is_tested_again;
    return begin + p;
  }
  return nullptr;
}

// Maybe further back than the walk has come.
void CCandidateQueue::walk_from(std::size_t p) {
  run_end = 0;
  word = p / 64;
  left = p < after_starts ? admitted(word) & ~std::uint64_t{0} << p % 64 : 0;
}

// Walks on to the next unit that can be a candidate's, if that at p cannot. Returns whether it did.
bool CCandidateQueue::walks_past(std::size_t p) {
  const std::size_t unit = first_unit_from(p);
  if (unit == p) return false;
  walk_from(std::min(unit, after_starts));
  return true;
}

// Goes on to the next word with a candidate that the mask admits, if none is left in this one. Returns false when there
// is none.
bool CCandidateQueue::has_admitted() {
  while (left == 0) {
    if (64 * ++word >= after_starts) return false;
    if (candidates->word(word) != 0) left = admitted(word);
  }
  return true;
}

// The next candidate of the walk, or after_starts.
std::size_t CCandidateQueue::next_admitted() {
  if (!has_admitted()) return after_starts;
  const std::size_t p = 64 * word + static_cast<std::size_t>(std::countr_zero(left));
  left &= left - 1;
  return p;
}

// One past the last start whose unit is followed by a symbol.
std::size_t CCandidateQueue::after_starts_of(unsigned any_L) const {
  const char* const last_followed = end - std::min<std::ptrdiff_t>(end - begin, any_L);
  return std::max(first_start, static_cast<std::size_t>(std::min(starts.end, last_followed) - begin));
}

// Of the bits of a word, those of starts that the mask admits.
std::uint64_t CCandidateQueue::admitted_of(unsigned any_L, std::size_t in_word, std::uint64_t bits) const {
  const std::size_t p = 64 * in_word;
  const std::size_t after = any_L == L ? after_starts : after_starts_of(any_L);
  if (p >= after || p + 64 <= first_start) return 0;
  const std::size_t skipped = p < first_start ? first_start - p : 0;
  const std::uint64_t admitted_bits = bits & mask->may_anchor_64(begin + p + skipped, any_L) << skipped;
  return after - p < 64 ? admitted_bits & ~(~std::uint64_t{0} << (after - p)) : admitted_bits;
}

// The first position from p on whose unit does not begin with N and is more than one symbol repeated, as far as the run
// of equal symbols at p tells. Such runs may be long.
std::size_t CCandidateQueue::first_unit_from(std::size_t p) {
  if (is_change_ahead(p)) return p;
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
