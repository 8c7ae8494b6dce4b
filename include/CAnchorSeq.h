#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

#include "CSequence_Mol.h"
#include "Csat.h"
#include "huge-pages.h"

// The anchor mask over one sequence: "a" where a position may anchor a new repeat unit, a blank where it lies inside an
// accepted repeat. One guard byte on each side is always "a", so positions -1 and `length` read as free. A mask may
// cover a window of the record alone; what lies outside of it is not kept.
class CAnchorSeq {
 public:
  static constexpr char anchor = 'a';
  static constexpr char covered = ' ';

  const char* seq_begin;
  unsigned length;
  std::unique_ptr<char[]> buffer;
  char* mask_begin;  // the mask byte of sequence position 0
  char* mask_end;    // the guard byte after the last position

  explicit CAnchorSeq(const CSequence_Mol& sequence) : CAnchorSeq(sequence.symbols.buffer, sequence.symbols.length) {}
  // Of the positions [window, window + its_length).
  CAnchorSeq(const char* window, unsigned its_length)
      : seq_begin(window),
        length(its_length),
        buffer(new char[static_cast<std::size_t>(length) + 3]),
        mask_begin(buffer.get() + 1),
        mask_end(mask_begin + length) {
    prefer_huge_pages(buffer.get(), static_cast<std::size_t>(length) + 3);
    free_all();
    mask_end[1] = '\0';
  }

  // Makes every position free again, guards included.
  void free_all() { std::memset(buffer.get(), anchor, static_cast<std::size_t>(length) + 2); }

  // True when a unit of L symbols may start at p, beside what accepted repeats cover: p is free, and so is the last
  // symbol of the unit or the one after it; or the last symbol is free, and so is the one in front of p.
  bool may_anchor(const char* p, unsigned L) const {
    const char* const first = mask_begin + (p - seq_begin);
    const char* const after = first + L;
    // Without branches, as the mask is hard to predict around repeats.
    const bool is_last_free = after[-1] == anchor;
    return ((first[0] == anchor) & (is_last_free | (after[0] == anchor))) | ((first[-1] == anchor) & is_last_free);
  }

  // Bit i: may_anchor(p + i, L). The last of the 64 units must be followed by a symbol.
  std::uint64_t may_anchor_64(const char* p, unsigned L) const {
    const char* const first = mask_begin + (p - seq_begin);
    const char* const after = first + L;
    const std::uint64_t are_firsts_free = free_64(first);
    const std::uint64_t are_afters_free = free_64(after);
    const std::uint64_t are_befores_free = are_firsts_free << 1 | static_cast<std::uint64_t>(first[-1] == anchor);
    const std::uint64_t are_lasts_free = are_afters_free << 1 | static_cast<std::uint64_t>(after[-1] == anchor);
    return (are_firsts_free & (are_lasts_free | are_afters_free)) | (are_befores_free & are_lasts_free);
  }

  // Covers the repeat and frees the positions of its edits again, so that later candidates may start there.
  void cover(const Csat& sat) {
    const char* const from = std::max(sat.pos_left, seq_begin);
    const char* const to = std::min(sat.pos_right, seq_begin + length);
    if (from < to) std::memset(mask_begin + (from - seq_begin), covered, static_cast<std::size_t>(to - from));
    for (const auto& entry : sat.missense_entries()) {
      if (seq_begin <= entry.position && entry.position < seq_begin + length) {
        mask_begin[entry.position - seq_begin] = anchor;
      }
    }
  }

 private:
  // Bit i: at[i] is free. The two values of a byte differ in their lowest bits; a product gathers eight of these.
  static std::uint64_t free_64(const char* at) {
    static_assert((anchor & 1) == 1 && (covered & 1) == 0);
    std::uint64_t bits = 0;
    for (unsigned i = 0; i < 64; i += 8) {
      std::uint64_t bytes = 0;
      std::memcpy(&bytes, at + i, sizeof bytes);
      bits |= ((bytes & 0x0101010101010101) * 0x0102040810204080 >> 56) << i;
    }
    return bits;
  }
};
