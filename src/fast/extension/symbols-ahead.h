#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "direction.h"
#include "extension-state.h"
#include "unit-text.h"

// Compares 64 symbols with a periodic unit, once for each diagonal, in the order in which an extension meets them: bit
// j of a word for the j-th symbol ahead, and the words from the diagonal with the unit symbols farthest ahead to the
// one with the nearest. `symbols` and `text` point at what lies first in memory. Ns gets the bits of the N's. Up to 8
// words after those of the diagonals are overwritten.
void compare_ahead(const char* symbols, const char* text, std::size_t diagonals, bool leftwards,
                   std::uint64_t* different, std::uint64_t* Ns);

// The 64 symbols ahead of an extension, compared with its unit on the diagonals around its own. On diagonal k a symbol
// is compared with the one of the unit k places after that which the extension would compare it with.
class CSymbolsAhead {
 public:
  static constexpr int size = 64;
  static constexpr int most_radius = 8;

  // For an extension of the unit up to `end`, which is not reached yet. Diagonals up to `its_radius` off are compared.
  template <typename Direction>
  void compare(const extension_state& from, const CUnitText& unit, const char* end, bool passes_over_Ns,
               int its_radius) {
    constexpr bool is_left = std::is_same_v<Direction, leftwards>;
    radius = static_cast<std::size_t>(its_radius);
    const std::size_t diagonals = 2 * radius + 1;
    const char* const text = unit.begin_of_wide() + Direction::first_of(from.u, size) - radius;
    const std::ptrdiff_t left_over = Direction::left_over(from.s, end);
    is_at_end = left_over < size;
    its_known = is_at_end ? static_cast<int>(left_over) : size;
    std::uint64_t Ns = 0;
    if (is_at_end) {
      std::array<char, size> copied{};
      std::copy_n(is_left ? end : from.s, left_over, is_left ? copied.end() - left_over : copied.begin());
      compare_ahead(copied.data(), text, diagonals, is_left, words.data(), &Ns);
    } else {
      compare_ahead(Direction::first_of(from.s, size), text, diagonals, is_left, words.data(), &Ns);
    }
    if (!passes_over_Ns || Ns == 0) return;
    its_known = std::countr_zero(Ns);
    is_at_end = false;
    const std::uint64_t in_front = (Ns - 1) & ~Ns;
    for (std::size_t i = 0; i < diagonals; ++i) words[i] &= in_front;
  }

  // The word of the diagonal of the extension, with that of diagonal k k words in front of it. A bit is set where the
  // symbols differ. From known() on all bits are set where the sequence ends there, and none otherwise.
  const std::uint64_t* different() const { return words.data() + radius; }

  // How many of the symbols are there, in front of the end of the sequence and of N's that are passed over.
  int known() const { return its_known; }
  bool ends_there() const { return is_at_end; }

 private:
  static_assert(CUnitText::margin >= size + most_radius);

  std::array<std::uint64_t, 2 * most_radius + 1 + 8> words{};
  std::size_t radius = 0;
  int its_known = 0;
  bool is_at_end = false;
};
