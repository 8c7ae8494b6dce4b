#include "bit-planes.h"

#include <algorithm>
#include <array>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bit-planes.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

#include "symbol-bits-inl.h"

HWY_BEFORE_NAMESPACE();
namespace quarvo_bit_planes {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Where bit `mask` of the 64 bytes at `symbols` is set.
HWY_INLINE std::uint64_t plane_of_64(const std::uint8_t* symbols, std::uint8_t mask) {
  return quarvo_symbol_bits::HWY_NAMESPACE::bits_of_64(
      [&](auto d, std::size_t i) { return hn::TestBit(hn::LoadU(d, symbols + i), hn::Set(d, mask)); });
}

// In upper-case ASCII, bits 1 and 2 tell A, C, G and T apart and bit 3 is set in N alone.
void linear_planes(const char* sequence, std::size_t length, std::uint64_t* low, std::uint64_t* high,
                   std::uint64_t* Ns) {
  for (std::size_t i = 0; i < length; i += 64) {
    std::array<std::uint8_t, 64> block{};
    const auto* symbols = reinterpret_cast<const std::uint8_t*>(sequence + i);
    if (length - i < 64) {
      std::copy_n(symbols, length - i, block.data());
      symbols = block.data();
    }
    low[i / 64] = plane_of_64(symbols, 0x02);
    high[i / 64] = plane_of_64(symbols, 0x04);
    Ns[i / 64] = plane_of_64(symbols, 0x08);
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_bit_planes
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_bit_planes {
HWY_EXPORT(linear_planes);
}

namespace {

using word_block = std::array<std::uint64_t, 64>;

// Transposes a matrix of 64 x 64 bits in place: bit c of word r goes to bit r of word c.
void transpose_64(word_block& m) {
  std::uint64_t mask = 0x00000000FFFFFFFF;
  for (unsigned width = 32; width != 0; width >>= 1, mask ^= mask << width) {
    for (unsigned r = 0; r < 64; r = ((r | width) + 1) & ~width) {
      const std::uint64_t swapped = ((m[r] >> width) ^ m[r | width]) & mask;
      m[r] ^= swapped << width;
      m[r | width] ^= swapped;
    }
  }
}

// 64 bits from bit position `position` on.
std::uint64_t bits_at(const std::vector<std::uint64_t>& linear, std::size_t position) {
  const std::size_t word = position / 64;
  const std::size_t shift = position % 64;
  if (shift == 0) return linear[word];
  return (linear[word] >> shift) | (linear[word + 1] << (64 - shift));
}

}  // namespace

// The linear planes begin with as many zero bits as the margin, rounded up to whole words.
void CBitPlanes::build(const char* sequence, std::size_t length, std::size_t margin) {
  its_length = length;
  its_stretch = std::max<std::size_t>((length + lanes - 1) / lanes, 1);
  its_margin = (margin + 63) / 64 * 64;
  const std::size_t pad = its_margin / 64;
  const std::size_t linear_words = pad + (lanes * its_stretch + its_margin + overrun + 64) / 64 + 2;
  std::vector<std::uint64_t> low(linear_words);
  std::vector<std::uint64_t> high(linear_words);
  std::vector<std::uint64_t> Ns(linear_words);
  using namespace quarvo_bit_planes;
  HWY_DYNAMIC_DISPATCH(linear_planes)
  (sequence, length, low.data() + pad, high.data() + pad, Ns.data() + pad);
  found_Ns = std::any_of(Ns.begin(), Ns.end(), [](std::uint64_t w) { return w != 0; });
  transpose(low, low_bits);
  transpose(high, high_bits);
  if (found_Ns) {
    transpose(Ns, N_bits);
  } else {
    N_bits.assign(low_bits.size(), 0);
  }
}

// Of a short record, whose positions are lanes side by side, as they are bits in the linear plane.
void CBitPlanes::lay_side_by_side(const std::vector<std::uint64_t>& linear, std::vector<std::uint64_t>& plane) const {
  for (std::size_t t = 0; t < plane.size() / words; ++t) {
    for (std::size_t w = 0; w < words_in_use(); ++w) plane[t * words + w] = bits_at(linear, w * 64 + t);
  }
}

void CBitPlanes::transpose(const std::vector<std::uint64_t>& linear, std::vector<std::uint64_t>& plane) const {
  const std::size_t vectors = its_stretch + 2 * its_margin + overrun;
  plane.resize(vectors * words);
  const std::size_t last = linear.size() - 2;
  if (its_stretch == 1) {
    lay_side_by_side(linear, plane);
    return;
  }
  word_block block;
  for (std::size_t group = 0; group < words; ++group) {
    for (std::size_t t = 0; t < vectors; t += 64) {
      for (std::size_t j = 0; j < 64; ++j) {
        const std::size_t position = (group * 64 + j) * its_stretch + t;
        block[j] = position / 64 <= last ? bits_at(linear, position) : 0;
      }
      transpose_64(block);
      const std::size_t count = std::min<std::size_t>(64, vectors - t);
      for (std::size_t i = 0; i < count; ++i) plane[(t + i) * words + group] = block[i];
    }
  }
}
#endif
