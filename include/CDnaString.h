#pragma once

#include <algorithm>
#include <cstring>

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
  // Returns true when source equals one of its own rotations, that is, repeats a shorter unit. Cost: linear.
  bool setToMinAlphaRepModCyclicPermOf(const CDnaString& source) {
    const unsigned n = source.length;
    bool periodic = false;
    const unsigned first = start_of_smallest_rotation(source, periodic);
    reserve(n);
    std::rotate_copy(source.buffer, source.buffer + first, source.buffer + n, buffer);
    length = n;
    return periodic;
  }

  // Makes this string the reverse complement of source (not this string itself).
  void set_to_reverse_complement_of(const CDnaString& source) {
    reserve(source.length);
    std::transform(source.buffer, source.buffer + source.length, buffer, complement);
    std::reverse(buffer, buffer + source.length);
    length = source.length;
  }

 private:
  // Compares the rotations that begin at two candidates, i and j. Where they differ first, after k equal symbols, the
  // greater one is ruled out together with the k rotations after it, since each of them is greater than its partner.
  // Smallest rotations are never ruled out, so if there are several, two of them meet and are equal throughout.
  static unsigned start_of_smallest_rotation(const CDnaString& source, bool& periodic) {
    const std::size_t n = source.length;
    const auto symbol = [&source, n](std::size_t at) {
      return static_cast<unsigned char>(source.buffer[at < n ? at : at - n]);
    };
    std::size_t i = 0;
    std::size_t j = 1;
    std::size_t k = 0;
    while (i < n && j < n && k < n) {
      const unsigned char a = symbol(i + k);
      const unsigned char b = symbol(j + k);
      if (a == b) {
        ++k;
        continue;
      }
      (a > b ? i : j) += k + 1;
      if (i == j) ++j;
      k = 0;
    }
    periodic = n > 1 && k == n;
    return static_cast<unsigned>(std::min(i, j));
  }
};

// Texts that a normal form needs, kept from unit to unit for their memory.
struct normal_form_workspace {
  CDnaString reversed;
  CDnaString smallest_of_unit;
};

// Makes `result` the normal form of the unit: the smaller of the smallest cyclic permutations of it and of its reverse
// complement. Returns true when the unit repeats a shorter one.
inline bool set_to_normal_form(CDnaString& result, const CDnaString& unit, normal_form_workspace& work) {
  CDnaString& other = work.smallest_of_unit;
  work.reversed.set_to_reverse_complement_of(unit);
  const bool periodic = result.setToMinAlphaRepModCyclicPermOf(work.reversed);
  other.setToMinAlphaRepModCyclicPermOf(unit);
  if (std::strcmp(result.c_str(), other.c_str()) > 0) result.assign(other.buffer, other.buffer + other.length);
  return periodic;
}
