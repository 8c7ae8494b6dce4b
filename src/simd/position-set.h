#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

// The first set bit from `from` on of `size` bits, bit i % 64 of word i / 64; `size` if there is none.
inline std::size_t next_set_bit(const std::uint64_t* words, std::size_t from, std::size_t size) {
  if (from >= size) return size;
  std::size_t word = from / 64;
  std::uint64_t bits = words[word] & (~std::uint64_t{0} << (from % 64));
  while (bits == 0 && 64 * (word + 1) < size) bits = words[++word];
  return bits == 0 ? size : std::min(size, 64 * word + static_cast<std::size_t>(std::countr_zero(bits)));
}

// A set of positions in front of an end, a bit each.
class CPositionSet {
 public:
  // None of the positions 0 .. end - 1.
  explicit CPositionSet(std::size_t end = 0) { clear(end); }
  void clear(std::size_t end) {
    its_end = end;
    words.assign((end + 63) / 64, 0);
  }
  // All of those in front of the end.
  void fill() {
    std::fill(words.begin(), words.end(), ~std::uint64_t{0});
    if (its_end % 64 != 0) words.back() >>= 64 - its_end % 64;
  }

  bool operator==(const CPositionSet&) const = default;
  std::size_t end() const { return its_end; }
  std::size_t bytes() const { return words.size() * sizeof(std::uint64_t); }

  bool has(std::size_t p) const { return (words[p / 64] >> p % 64 & 1) != 0; }
  // Bit i: has(64 * word + i).
  std::uint64_t word(std::size_t word) const { return words[word]; }
  // The first one at or after p, or the end.
  std::size_t next(std::size_t p) const { return next_set_bit(words.data(), p, its_end); }

  void add(std::size_t p) { words[p / 64] |= std::uint64_t{1} << (p % 64); }
  void remove(std::size_t p) { words[p / 64] &= ~(std::uint64_t{1} << (p % 64)); }
  // The positions of a set with the same end.
  void add(const CPositionSet& other) {
    for (std::size_t word = 0; word < words.size(); ++word) {
      if (other.words[word] != 0) words[word] |= other.words[word];
    }
  }
  // The positions of a set from `from` on, as far as they are in front of the end, that one becoming 0.
  void add_part(const CPositionSet& whole, std::size_t from) {
    for (std::size_t p = 0; p < its_end; p += 64) {
      const std::uint64_t bits = whole.bits_from(from + p);
      words[p / 64] |= its_end - p < 64 ? bits & ~(~std::uint64_t{0} << (its_end - p)) : bits;
    }
  }
  // The position p + i for each bit i.
  void add_64(std::size_t p, std::uint64_t bits) {
    words[p / 64] |= bits << (p % 64);
    if (p % 64 != 0 && bits >> (64 - p % 64) != 0) words[p / 64 + 1] |= bits >> (64 - p % 64);
  }

  // Blocks: the `size` positions from a multiple of it on, where it is a power of two up to 64.
  // Those of them that the set has, as bits of their word.
  std::uint64_t block_bits(std::size_t p, unsigned size) const { return words[p / 64] & block(p, size); }
  void remove_block(std::size_t p, unsigned size) { words[p / 64] &= ~block(p, size); }

 private:
  std::size_t its_end = 0;
  std::vector<std::uint64_t> words;

  // Bit i: has the position p + i.
  std::uint64_t bits_from(std::size_t p) const {
    const std::size_t word = p / 64;
    const std::size_t shift = p % 64;
    if (shift == 0 || word + 1 == words.size()) return words[word] >> shift;
    return words[word] >> shift | words[word + 1] << (64 - shift);
  }
  static std::uint64_t block(std::size_t p, unsigned size) { return ~std::uint64_t{0} >> (64 - size) << (p % 64); }
};
