#ifndef QUARVO_CDNASTRING_H
#define QUARVO_CDNASTRING_H

#include <algorithm>
#include <cstring>
#include <memory>

#include "faststring.h"

// A DNA text with the two operations that bring repeat units into a normal form: the smallest cyclic permutation and
// the reverse complement. Symbols are bytes, compared as unsigned characters.
class CDnaString : public faststring {
 public:
  // The complement of an upper-case IUPAC letter; '?' for every other byte, S, W and U included.
  static constexpr char complement(char symbol) {
    constexpr char from[] = "ATCGBVDHKMRYN";
    constexpr char to[] = "TAGCVBHDMKYRN";
    for (unsigned i = 0; i + 1 < sizeof from; ++i) {
      if (from[i] == symbol) return to[i];
    }
    return '?';
  }

  // Makes this string the alphabetically smallest cyclic permutation of source (not this string itself).
  // Returns true when source equals one of its own rotations, that is, repeats a shorter unit.
  // Cost: linear for usual units, n comparisons of n bytes at worst.
  bool setToMinAlphaRepModCyclicPermOf(const CDnaString& source) {
    const unsigned n = source.length;
    const std::unique_ptr<char[]> twice(new char[2 * static_cast<std::size_t>(n) + 1]);
    std::memcpy(twice.get(), source.buffer, n);
    std::memcpy(twice.get() + n, source.buffer, n);
    twice[2 * static_cast<std::size_t>(n)] = '\0';

    bool periodic = false;
    const char* best = twice.get();
    for (unsigned i = 1; i < n; ++i) {
      const char* const rotation = twice.get() + i;
      const int order = std::memcmp(rotation, best, n);
      if (order < 0) best = rotation;
      if (order == 0) periodic = true;
    }
    assign(best, best + n);
    return periodic;
  }

  // Makes this string the reverse complement of source (not this string itself).
  void set_to_reverse_complement_of(const CDnaString& source) {
    reserve(source.length);
    std::transform(source.buffer, source.buffer + source.length, buffer, complement);
    std::reverse(buffer, buffer + source.length);
    length = source.length;
  }
};

#endif
