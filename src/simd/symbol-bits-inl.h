// Symbols compared 64 at a time, the answers as the bits of a word; once for each vector target: to be included after
// hwy/foreach_target.h.

#include <hwy/highway.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(QUARVO_FAST_SYMBOL_BITS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef QUARVO_FAST_SYMBOL_BITS_INL_H
#undef QUARVO_FAST_SYMBOL_BITS_INL_H
#else
#define QUARVO_FAST_SYMBOL_BITS_INL_H
#endif

HWY_BEFORE_NAMESPACE();
namespace quarvo_symbol_bits {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Mask bits are stored as bytes and read as words.
static_assert(std::endian::native == std::endian::little);

// The lanes of a mask, 64 at most, as bits.
template <typename Tag, typename Mask>
HWY_INLINE std::uint64_t bits_of(Tag d, Mask mask) {
  std::uint8_t bytes[8] = {};
  hn::StoreMaskBits(d, mask, bytes);
  std::uint64_t bits = 0;
  std::memcpy(&bits, bytes, (hn::Lanes(d) + 7) / 8);
  return bits;
}

using symbol_lanes = hn::CappedTag<std::uint8_t, 64>;

// Bit i: is_wanted(d, i) has its lane set in the mask for the Lanes(d) symbols from i on.
template <typename Wanted>
HWY_INLINE std::uint64_t bits_of_64(Wanted is_wanted) {
  const symbol_lanes d;
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < 64; i += hn::Lanes(d)) word |= bits_of(d, is_wanted(d, i)) << i;
  return word;
}

// Bit i: a[i] equals b[i].
HWY_INLINE std::uint64_t equal_64(const std::uint8_t* a, const std::uint8_t* b) {
  return bits_of_64([&](symbol_lanes d, std::size_t i) { return hn::Eq(hn::LoadU(d, a + i), hn::LoadU(d, b + i)); });
}

// Bit i: a[i] is the symbol.
HWY_INLINE std::uint64_t equal_64(const std::uint8_t* a, std::uint8_t symbol) {
  return bits_of_64([&](symbol_lanes d, std::size_t i) { return hn::Eq(hn::LoadU(d, a + i), hn::Set(d, symbol)); });
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_symbol_bits
HWY_AFTER_NAMESPACE();

#endif
