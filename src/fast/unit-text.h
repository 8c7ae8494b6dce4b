#ifndef QUARVO_FAST_UNIT_TEXT_H
#define QUARVO_FAST_UNIT_TEXT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "direction.h"

// A repeat unit written out periodically, so that a word of its symbols can be read from any cursor to either side.
// begin()[u] is unit symbol u mod L for -8 <= u < L + 8. Keeps its memory from unit to unit.
class CUnitText {
 public:
  void set(const char* unit_begin, const char* unit_end) {
    const std::size_t L = static_cast<unsigned>(unit_end - unit_begin);
    its_length = static_cast<int>(L);
    reciprocal = (std::uint64_t{1} << 32) / L + 1;
    if (text.size() < L + 2 * margin) text.resize(L + 2 * margin);
    char* const first = text.data() + margin;
    std::copy(unit_begin, unit_end, first);
    for (std::size_t u = 0; u < margin; ++u) first[L + u] = first[u];
    for (std::size_t u = 1; u <= margin; ++u) *(first - u) = *(first - u + L);
  }

  int length() const { return its_length; }

  // The cursor that u, -symbols_a_word <= u < L + symbols_a_word, stands for. Without branches, since how far a run
  // goes cannot be predicted: a multiplication by 1/L, rounded up, whose error stays below 1/L for all unit lengths
  // there are.
  int wrapped(int u) const {
    const auto raised = static_cast<std::uint64_t>(u + symbols_a_word * its_length);
    return static_cast<int>(raised - (raised * reciprocal >> 32) * static_cast<std::uint64_t>(its_length));
  }

  const char* begin() const { return text.data() + margin; }

 private:
  static constexpr std::size_t margin = symbols_a_word;
  std::vector<char> text;
  int its_length = 0;
  std::uint64_t reciprocal = 0;
};

#endif
