#include "symbols-ahead.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "symbols-ahead.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

#include "symbol-bits-inl.h"

HWY_BEFORE_NAMESPACE();
namespace quarvo_symbols_ahead {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

void compare(const std::uint8_t* symbols, const std::uint8_t* text, std::size_t diagonals, std::uint64_t* mismatches,
             std::uint64_t* Ns) {
  using quarvo_symbol_bits::HWY_NAMESPACE::equal_64;
  *Ns = equal_64(symbols, 'N');
  for (std::size_t k = 0; k < diagonals; ++k) mismatches[k] = ~equal_64(symbols, text + k);
}

// The bits of each word in reverse order.
void reverse_bits(std::uint64_t* words, std::size_t count) {
  const hn::CappedTag<std::uint64_t, 8> d;
  const auto swap = [&](auto v, std::uint64_t mask, int distance) {
    const auto kept = hn::Set(d, mask);
    return hn::Or(hn::ShiftLeftSame(hn::And(v, kept), distance), hn::And(hn::ShiftRightSame(v, distance), kept));
  };
  for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
    auto v = hn::LoadU(d, words + i);
    v = swap(v, 0x5555555555555555, 1);
    v = swap(v, 0x3333333333333333, 2);
    v = swap(v, 0x0f0f0f0f0f0f0f0f, 4);
    v = swap(v, 0x00ff00ff00ff00ff, 8);
    v = swap(v, 0x0000ffff0000ffff, 16);
    v = swap(v, 0x00000000ffffffff, 32);
    hn::StoreU(v, d, words + i);
  }
}

void compare_right(const std::uint8_t* symbols, const std::uint8_t* text, std::size_t diagonals,
                   std::uint64_t* different, std::uint64_t* Ns) {
  compare(symbols, text, diagonals, different, Ns);
  std::reverse(different, different + diagonals);
}

void compare_left(const std::uint8_t* symbols, const std::uint8_t* text, std::size_t diagonals,
                  std::uint64_t* different, std::uint64_t* Ns) {
  compare(symbols, text, diagonals, different, Ns);
  different[diagonals] = *Ns;
  reverse_bits(different, diagonals + 1);
  *Ns = different[diagonals];
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_symbols_ahead
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace quarvo_symbols_ahead {
HWY_EXPORT(compare_right);
HWY_EXPORT(compare_left);
}  // namespace quarvo_symbols_ahead

void compare_ahead(const char* symbols, const char* text, std::size_t diagonals, bool leftwards,
                   std::uint64_t* different, std::uint64_t* Ns) {
  using bytes = const std::uint8_t*;
  using namespace quarvo_symbols_ahead;
  if (leftwards) {
    HWY_DYNAMIC_DISPATCH(compare_left)
    (reinterpret_cast<bytes>(symbols), reinterpret_cast<bytes>(text), diagonals, different, Ns);
  } else {
    HWY_DYNAMIC_DISPATCH(compare_right)
    (reinterpret_cast<bytes>(symbols), reinterpret_cast<bytes>(text), diagonals, different, Ns);
  }
}

#endif
