#ifndef QUARVO_FAST_UNIT_TEXT_H
#define QUARVO_FAST_UNIT_TEXT_H

#include <algorithm>
#include <cstddef>
#include <vector>

#include "direction.h"

// A repeat unit written out periodically, so that a word of its symbols can be read from any cursor to either side.
// begin()[u] is unit symbol u mod L for -8 <= u < L + 8. Keeps its memory from unit to unit.
class CUnitText {
 public:
  void set(const char* unit_begin, const char* unit_end) {
    const auto L = static_cast<std::size_t>(unit_end - unit_begin);
    its_length = static_cast<int>(L);
    if (text.size() < L + 2 * margin) text.resize(L + 2 * margin);
    char* const first = text.data() + margin;
    std::copy(unit_begin, unit_end, first);
    for (std::size_t u = 0; u < margin; ++u) first[L + u] = first[u];
    for (std::size_t u = 1; u <= margin; ++u) *(first - u) = *(first - u + L);
  }

  int length() const { return its_length; }
  const char* begin() const { return text.data() + margin; }

 private:
  static constexpr std::size_t margin = symbols_a_word;
  std::vector<char> text;
  int its_length = 0;
};

#endif
