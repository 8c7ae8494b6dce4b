#include "symbol-copy.h"

#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "symbol-copy.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

// The plain symbols differ in their low four bits. These select what a byte must be, in upper case, to be the symbol,
// and what it is stored as. Nothing in upper case is equal to `none`, which has the lower-case bit.
#ifndef QUARVO_SYMBOL_COPY_TABLES
#define QUARVO_SYMBOL_COPY_TABLES
namespace quarvo_symbol_copy {
inline constexpr std::uint8_t none = 0xFF;
alignas(16) inline constexpr std::uint8_t plain[16] = {none, 'A',  none, 'C',  'T',  'U',  none, 'G',
                                                       none, none, none, none, none, none, 'N',  none};
alignas(16) inline constexpr std::uint8_t stored_as[16] = {none, 'A',  none, 'C',  'T',  'T',  none, 'G',
                                                           none, none, none, none, none, none, 'N',  none};
inline constexpr std::uint8_t upper_case = 0xDF;
inline constexpr std::uint8_t low_bits = 0x0F;

inline bool is_plain(std::uint8_t byte) { return plain[byte & low_bits] == (byte & upper_case); }
}  // namespace quarvo_symbol_copy
#endif

HWY_BEFORE_NAMESPACE();
namespace quarvo_symbol_copy {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

// A byte at a time, as there are no tables of 16 entries here.
copied_lines copy_lines(const std::uint8_t* from, std::size_t count, std::uint8_t* to) {
  copied_lines done{0, 0, 0};
  for (; done.consumed < count; ++done.consumed) {
    const std::uint8_t byte = from[done.consumed];
    const std::size_t after = done.consumed + 1;
    if (is_plain(byte)) {
      to[done.stored++] = stored_as[byte & low_bits];
    } else if (byte == '\n' && after < count && is_plain(from[after])) {
      ++done.line_ends;
    } else {
      break;
    }
  }
  return done;
}

#else

copied_lines copy_lines(const std::uint8_t* from, std::size_t count, std::uint8_t* to) {
  const hn::CappedTag<std::uint8_t, 64> d;
  const auto plain_table = hn::LoadDup128(d, plain);
  const auto stored_table = hn::LoadDup128(d, stored_as);
  copied_lines done{0, 0, 0};
  while (done.consumed + hn::Lanes(d) <= count) {
    const auto bytes = hn::LoadU(d, from + done.consumed);
    const auto selected = hn::And(bytes, hn::Set(d, low_bits));
    hn::StoreU(hn::TableLookupBytes(stored_table, selected), d, to + done.stored);
    const auto other = hn::Ne(hn::TableLookupBytes(plain_table, selected), hn::And(bytes, hn::Set(d, upper_case)));
    const auto found = hn::FindFirstTrue(d, other);
    const std::size_t taken = found < 0 ? hn::Lanes(d) : static_cast<std::size_t>(found);
    done.consumed += taken;
    done.stored += taken;
    if (found < 0) continue;
    const std::size_t after = done.consumed + 1;
    if (from[done.consumed] != '\n' || after == count || !is_plain(from[after])) break;
    done.consumed = after;
    ++done.line_ends;
  }
  return done;
}

#endif

std::size_t line_end_distance(const std::uint8_t* bytes, std::size_t count) {
  const hn::CappedTag<std::uint8_t, 64> d;
  std::size_t i = 0;
  for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d)) {
    const auto block = hn::LoadU(d, bytes + i);
    const auto ends =
        hn::Or(hn::Eq(block, hn::Set(d, std::uint8_t{'\n'})), hn::Eq(block, hn::Set(d, std::uint8_t{'\r'})));
    const auto found = hn::FindFirstTrue(d, ends);
    if (found >= 0) return i + static_cast<std::size_t>(found);
  }
  while (i < count && bytes[i] != '\n' && bytes[i] != '\r') ++i;
  return i;
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_symbol_copy
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_symbol_copy {
HWY_EXPORT(copy_lines);
HWY_EXPORT(line_end_distance);
}  // namespace quarvo_symbol_copy

using namespace quarvo_symbol_copy;

copied_lines copy_symbol_lines(const char* from, std::size_t count, char* to) {
  return HWY_DYNAMIC_DISPATCH(copy_lines)(reinterpret_cast<const std::uint8_t*>(from), count,
                                          reinterpret_cast<std::uint8_t*>(to));
}

const char* find_line_end(const char* begin, const char* end) {
  return begin + HWY_DYNAMIC_DISPATCH(line_end_distance)(reinterpret_cast<const std::uint8_t*>(begin),
                                                         static_cast<std::size_t>(end - begin));
}
#endif  // HWY_ONCE
