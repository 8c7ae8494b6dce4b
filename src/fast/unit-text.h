#ifndef QUARVO_FAST_UNIT_TEXT_H
#define QUARVO_FAST_UNIT_TEXT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "direction.h"

// A repeat unit written out periodically, so that stretches of it can be read from any cursor to either side.
// begin()[u] is unit symbol u mod L for -margin <= u < L + margin. Keeps its memory from unit to unit.
class CUnitText {
 public:
  static constexpr int margin = 96;

  void set(const char* unit_begin, const char* unit_end) {
    const std::size_t L = static_cast<unsigned>(unit_end - unit_begin);
    its_length = static_cast<int>(L);
    reciprocal = (std::uint64_t{1} << 32) / L + 1;
    const std::size_t size = L + 2 * margin;
    if (text.size() < size) text.resize(size);
    // A first period from unit symbol -margin mod L on, then copies of what there is already.
    const std::size_t first = (L - margin % L) % L;
    std::copy(unit_begin + first, unit_end, text.data());
    std::copy(unit_begin, unit_begin + first, text.data() + (L - first));
    for (std::size_t filled = L; filled < size; filled *= 2) {
      std::copy_n(text.data(), std::min(filled, size - filled), text.data() + filled);
    }
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
  std::vector<char> text;
  int its_length = 0;
  std::uint64_t reciprocal = 0;
};

#endif
