#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "direction.h"

// A repeat unit written out periodically, so that stretches of it can be read from any cursor to either side.
// begin()[u] is unit symbol u mod L for -symbols_a_word <= u < L + symbols_a_word; begin_of_wide()[u] for -margin <= u
// < L + margin, which is written when it is asked for first. Keeps its memory from unit to unit.
class CUnitText {
 public:
  static constexpr int margin = 96;
  static_assert(margin % symbols_a_word == 0);

  void set(const char* unit_begin, const char* unit_end) {
    const std::size_t L = static_cast<unsigned>(unit_end - unit_begin);
    its_length = static_cast<int>(L);
    its_origin = unit_begin;
    reciprocal = (std::uint64_t{1} << 32) / L + 1;
    if (text.size() < L + std::size_t{2} * margin) text.resize(L + std::size_t{2} * margin);
    std::copy(unit_begin, unit_end, text.data() + margin);
    written = 0;
    write_margins(symbols_a_word);
  }

  int length() const { return its_length; }
  // Where it was copied from.
  const char* origin() const { return its_origin; }

  // The cursor that u, -symbols_a_word <= u < L + symbols_a_word, stands for. Without branches, since how far a run
  // goes cannot be predicted: a multiplication by 1/L, rounded up, whose error stays below 1/L for all unit lengths
  // there are.
  int wrapped(int u) const {
    const auto raised = static_cast<std::uint64_t>(u + symbols_a_word * its_length);
    return static_cast<int>(raised - (raised * reciprocal >> 32) * static_cast<std::uint64_t>(its_length));
  }

  const char* begin() const { return text.data() + margin; }

  const char* begin_of_wide() const {
    if (written < margin) write_margins(margin);
    return begin();
  }

 private:
  mutable std::vector<char> text;
  mutable int written = 0;  // symbols of each margin that are there
  int its_length = 0;
  const char* its_origin = nullptr;
  std::uint64_t reciprocal = 0;

  // A word at a time, from as many whole units away as are a word at least, once there are so many.
  void write_margins(int wanted) const {
    char* const first = text.data() + margin;
    char* const end = first + its_length;
    const int away = its_length * ((symbols_a_word + its_length - 1) / its_length);
    if (away > its_length + 2 * written) {
      for (int u = written; u < wanted; ++u) end[u] = end[u - its_length];
      for (int u = -1 - written; u >= -wanted; --u) first[u] = first[u + its_length];
    } else {
      for (int u = written; u < wanted; u += symbols_a_word) {
        std::memcpy(end + u, end + u - away, symbols_a_word);
        std::memcpy(first - u - symbols_a_word, first - u - symbols_a_word + away, symbols_a_word);
      }
    }
    written = wanted;
  }
};
