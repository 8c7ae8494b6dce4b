#include "match-window.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "match-window.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace quarvo_match_window {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Mask bits are stored as bytes and read as words.
static_assert(std::endian::native == std::endian::little);

constexpr std::size_t window = 64;
using lanes = hn::CappedTag<std::uint8_t, window>;

// Bit i is set where is_wanted(i) has its lane set for the vector that begins at symbol i.
template <typename Wanted>
HWY_INLINE std::uint64_t bits_of_64(Wanted wanted) {
  const lanes d;
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < window; i += hn::Lanes(d)) {
    std::uint8_t bytes[8];
    const std::size_t count = hn::StoreMaskBits(d, wanted(i), bytes);
    std::uint64_t part = 0;
    std::memcpy(&part, bytes, count);
    word |= part << i;
  }
  return word;
}

void compare(const std::uint8_t* symbols, const std::uint8_t* text, std::size_t diagonals, std::uint64_t* mismatches,
             std::uint64_t* Ns) {
  const lanes d;
  const auto N = hn::Set(d, std::uint8_t{'N'});
  *Ns = bits_of_64([&](std::size_t i) { return hn::Eq(hn::LoadU(d, symbols + i), N); });
  for (std::size_t k = 0; k < diagonals; ++k) {
    mismatches[k] =
        ~bits_of_64([&](std::size_t i) { return hn::Eq(hn::LoadU(d, symbols + i), hn::LoadU(d, text + k + i)); });
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_match_window
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace quarvo_match_window {
HWY_EXPORT(compare);
}

void compare_on_diagonals(const char* symbols, const char* text, std::size_t diagonals, std::uint64_t* mismatches,
                          std::uint64_t* Ns) {
  using bytes = const std::uint8_t*;
  using namespace quarvo_match_window;
  HWY_DYNAMIC_DISPATCH(compare)
  (reinterpret_cast<bytes>(symbols), reinterpret_cast<bytes>(text), diagonals, mismatches, Ns);
}

#endif
