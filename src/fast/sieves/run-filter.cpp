#include "run-filter.h"

#include <algorithm>
#include <cstring>

#include "position-set.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "run-filter.cpp"
#include <hwy/cache_control.h>
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

#include "symbol-bits-inl.h"

HWY_BEFORE_NAMESPACE();
namespace quarvo_run_filter {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <bool Ns_match>
HWY_INLINE std::uint64_t matches_of_64(const std::uint8_t* a, const std::uint8_t* b) {
  return quarvo_symbol_bits::HWY_NAMESPACE::bits_of_64([&](auto d, std::size_t i) {
    const auto symbols = hn::LoadU(d, a + i);
    const auto others = hn::LoadU(d, b + i);
    const auto equal = hn::Eq(symbols, others);
    if (!Ns_match) return equal;
    const auto Ns = hn::Set(d, std::uint8_t{'N'});
    return hn::Or(equal, hn::Or(hn::Eq(symbols, Ns), hn::Eq(others, Ns)));
  });
}

// Sets bit i of `words` where a[i] and b[i] are equal (or one is an N, if N's match), for so many positions; the other
// bits of the last word are 0.
template <bool Ns_match>
void match_all(const std::uint8_t* a, const std::uint8_t* b, std::size_t positions, std::uint64_t* words) {
  for (; positions >= 64; positions -= 64, a += 64, b += 64) {
    // Each unit length reads the whole record again, and processors by themselves stop ahead of a new page.
    hwy::Prefetch(a + 2048);
    *words++ = matches_of_64<Ns_match>(a, b);
  }
  if (positions == 0) return;
  std::uint8_t padded_a[64];
  std::uint8_t padded_b[64];
  std::memset(padded_a, 1, sizeof padded_a);
  std::memset(padded_b, 2, sizeof padded_b);
  std::memcpy(padded_a, a, positions);
  std::memcpy(padded_b, b, positions);
  *words = matches_of_64<Ns_match>(padded_a, padded_b);
}

void match_positions(const std::uint8_t* a, const std::uint8_t* b, std::size_t positions, bool Ns_match,
                     std::uint64_t* words) {
  (Ns_match ? match_all<true> : match_all<false>)(a, b, positions, words);
}

// words[i] &= the words shifted down by `distance` bits, for `count` words rounded up to whole vectors. Reads
// distance / 64 + 1 words after them. Works upwards, so that what is read has not been written yet.
void and_with_shifted(std::uint64_t* words, std::size_t count, std::size_t distance) {
  const hn::CappedTag<std::uint64_t, 8> d;
  const std::size_t skipped = distance / 64;
  const int bits = static_cast<int>(distance % 64);
  for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
    auto shifted = hn::LoadU(d, words + i + skipped);
    if (bits != 0) {
      const auto next = hn::LoadU(d, words + i + skipped + 1);
      shifted = hn::Or(hn::ShiftRightSame(shifted, bits), hn::ShiftLeftSame(next, 64 - bits));
    }
    hn::StoreU(hn::And(hn::LoadU(d, words + i), shifted), d, words + i);
  }
}

// Leaves the bits at which a run of at least `run` set bits begins or goes on.
void keep_runs(std::uint64_t* words, std::size_t count, std::size_t run) {
  for (std::size_t known = 1; known < run;) {
    const std::size_t step = std::min(known, run - known);
    and_with_shifted(words, count, step);
    known += step;
  }
}

std::size_t one_symbol_prefix(const std::uint8_t* symbols, std::size_t count) {
  const hn::CappedTag<std::uint8_t, 64> d;
  const auto first = hn::Set(d, symbols[0]);
  std::size_t i = 0;
  for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d)) {
    const auto differs = hn::Ne(hn::LoadU(d, symbols + i), first);
    const auto found = hn::FindFirstTrue(d, differs);
    if (found >= 0) return i + static_cast<std::size_t>(found);
  }
  while (i < count && symbols[i] == symbols[0]) ++i;
  return i;
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_run_filter
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_run_filter {
HWY_EXPORT(match_positions);
HWY_EXPORT(keep_runs);
HWY_EXPORT(one_symbol_prefix);
}  // namespace quarvo_run_filter

namespace {

using namespace quarvo_run_filter;

const std::uint8_t* as_bytes(const char* symbols) { return reinterpret_cast<const std::uint8_t*>(symbols); }

}  // namespace

int CRunFilter::wanted_matches(unsigned L, int min_score, int min_length) {
  const auto beyond_first_unit = static_cast<std::int64_t>(min_length) - static_cast<std::int64_t>(L);
  return static_cast<int>(std::max<std::int64_t>(min_score, beyond_first_unit));
}

CRunFilter::CRunFilter(const char* its_begin, const char* end, unsigned its_L, int wanted_matches, bool Ns_are_neutral)
    : begin(its_begin),
      L(its_L),
      K(std::min<std::ptrdiff_t>(wanted_matches, longest_run)),
      Ns_match(Ns_are_neutral),
      starts(end - its_begin - its_L) {}

std::ptrdiff_t CRunFilter::first_member(std::ptrdiff_t from) {
  for (;;) {
    // Between an earlier `from` and the block there is no member.
    from = std::max(from, block_begin);
    if (from >= starts) return starts;
    if (from < block_end) {
      from = block_begin +
             static_cast<std::ptrdiff_t>(next_set_bit(members.data(), static_cast<std::size_t>(from - block_begin),
                                                      static_cast<std::size_t>(block_end - block_begin)));
      if (from != block_end || from >= starts) return from;
    }
    load_block(from);
  }
}

// Makes B for the block that begins at or shortly in front of `from`.
void CRunFilter::load_block(std::ptrdiff_t from) {
  block_begin = from & ~std::ptrdiff_t{63};
  const auto left = static_cast<std::size_t>(starts - block_begin);
  const std::size_t positions = std::min(left, 64 * (block_words + look_ahead_words));
  const std::size_t words = (positions + 63) / 64;
  const auto* const symbols = as_bytes(begin + block_begin);
  HWY_DYNAMIC_DISPATCH(match_positions)(symbols, symbols + L, positions, Ns_match, members.data());
  std::fill_n(members.begin() + static_cast<std::ptrdiff_t>(words), spare_words, 0);
  HWY_DYNAMIC_DISPATCH(keep_runs)(members.data(), words, static_cast<std::size_t>(K));
  block_end = block_begin + static_cast<std::ptrdiff_t>(std::min(left, 64 * block_words));
}

const char* end_of_one_symbol_run(const char* p, const char* end) {
  return p + HWY_DYNAMIC_DISPATCH(one_symbol_prefix)(as_bytes(p), static_cast<std::size_t>(end - p));
}

std::vector<std::uint64_t> changes_of_symbol(const char* begin, const char* end) {
  const auto symbols = static_cast<std::size_t>(end - begin);
  std::vector<std::uint64_t> words(symbols / 64 + 2);
  if (symbols < 2) return words;
  const std::size_t pairs = symbols - 1;
  HWY_DYNAMIC_DISPATCH(match_positions)(as_bytes(begin), as_bytes(begin) + 1, pairs, true, words.data());
  for (std::size_t i = 0; i <= pairs / 64; ++i) words[i] = ~words[i];
  words[pairs / 64] &= ~(~std::uint64_t{0} << pairs % 64);
  return words;
}
#endif  // HWY_ONCE
