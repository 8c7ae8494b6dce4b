#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "CSequence_Mol.h"
#include "Csat.h"

// The anchor mask over one sequence: which positions may anchor a new repeat unit, and which lie inside an accepted
// repeat. The positions -1 and `length` are always free. A mask may cover a window of the record alone; what lies
// outside of it is not kept.
//
// A bit a position, so that the mask of a chromosome stays in the cache and 64 units are asked for at once.
class CAnchorSeq {
 public:
  const char* seq_begin;
  unsigned length;
  std::vector<std::uint64_t> buffer;  // bit position + 1 is set where the position is covered

  explicit CAnchorSeq(const CSequence_Mol& sequence) : CAnchorSeq(sequence.symbols.buffer, sequence.symbols.length) {}
  // Of the positions [window, window + its_length).
  CAnchorSeq(const char* window, unsigned its_length)
      : seq_begin(window), length(its_length), buffer((std::size_t{its_length} + 1) / 64 + 2) {}

  // Makes every position free again.
  void free_all() { std::fill(buffer.begin(), buffer.end(), 0); }

  // Of a position of the window, the one in front of it or the one after it.
  bool is_free(const char* p) const { return (covered_64(p) & 1) == 0; }
  // The first free position at or after p.
  const char* next_free(const char* p) const {
    std::uint64_t covered = covered_64(p);
    for (; covered == ~std::uint64_t{0}; covered = covered_64(p)) p += 64;
    return p + std::countr_one(covered);
  }

  // True when a unit of L symbols may start at p, beside what accepted repeats cover: p is free, and so is the last
  // symbol of the unit or the one after it; or the last symbol is free, and so is the one in front of p.
  bool may_anchor(const char* p, unsigned L) const { return (may_anchor_64(p, L) & 1) != 0; }

  // Bit i: may_anchor(p + i, L), where that unit is followed by a symbol of the window.
  std::uint64_t may_anchor_64(const char* p, unsigned L) const {
    const std::uint64_t befores = covered_64(p - 1);
    const std::uint64_t firsts = covered_64(p);
    const std::uint64_t lasts = covered_64(p + L - 1);
    const std::uint64_t afters = covered_64(p + L);
    return ~((firsts | (lasts & afters)) & (befores | lasts));
  }

  // Covers the repeat and frees the positions of its edits again, so that later candidates may start there.
  void cover(const Csat& sat) {
    const char* const from = std::max(sat.pos_left, seq_begin);
    const char* const to = std::min(sat.pos_right, seq_begin + length);
    for (const char* p = from; p < to;) {
      const std::size_t bit = bit_of(p);
      const auto bits = std::min<std::size_t>(64 - bit % 64, static_cast<std::size_t>(to - p));
      buffer[bit / 64] |= ~std::uint64_t{0} >> (64 - bits) << bit % 64;
      p += bits;
    }
    for (const auto& entry : sat.missense_entries()) {
      if (seq_begin <= entry.position && entry.position < seq_begin + length) {
        const std::size_t bit = bit_of(entry.position);
        buffer[bit / 64] &= ~(std::uint64_t{1} << bit % 64);
      }
    }
  }

 private:
  std::size_t bit_of(const char* p) const { return static_cast<std::size_t>(p + 1 - seq_begin); }

  // Bit i: p + i is covered. What lies beyond the last word is taken as free.
  std::uint64_t covered_64(const char* p) const {
    const std::size_t word = bit_of(p) / 64;
    const std::size_t shift = bit_of(p) % 64;
    if (word + 1 >= buffer.size()) return buffer.back() >> shift;
    return buffer[word] >> shift | buffer[word + 1] << 1 << (63 - shift);
  }
};
