#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

// A sequence as three bit planes (two of the symbol, one of "is N"), laid out so that bit operations work on many
// distant positions at once.
//
// The sequence is cut into `lanes` stretches of `stretch` symbols. The plane vector of index t holds bit j for position
// j * stretch + t, so the symbol at a fixed distance from each position is in another vector at the same bit. Indices
// go from -margin to stretch + margin + overrun - 1; positions outside the sequence read as arbitrary symbols that are
// not N. Words of lanes that stand for no symbol at all hold anything. Costs 3/8 byte a symbol, and as much while it is
// built.
//
// For example, with 3 lanes in place of 512 the 12 symbols ACGTGATCCGAA make stretches of 4:
//
//   position   0 1 2 3 | 4 5 6 7 | 8 9 10 11         low    0 for A and T, 1 for C and G
//   symbol     A C G T | G A T C | C G A  A          high   0 for A and C, 1 for G and T
//
//   vector t   -1   0    1    2    3    4    5
//   lane 0      ?   A    C    G    T    G    A       what lane 0 has in its margin, lane 1 begins with
//   lane 1      T   G    A    T    C    C    G
//   lane 2      C   C    G    A    A    ?    ?       ?: outside the sequence
//   low        ?01 011  101  100  010  11?  01?
//   high       ?10 010  001  110  100  10?  01?
//
// So whether the positions 0, 4 and 8 equal those 5 further on is seen at once from the vectors 0 and 5, without any
// shift: ~(low(0) ^ low(5) | high(0) ^ high(5)) = 11?, as A is at 0 and 5, and G at 4 and 9.
class CBitPlanes {
 public:
  static constexpr std::size_t lanes = 512;
  static constexpr std::size_t words = lanes / 64;  // of a plane vector
  static constexpr std::size_t overrun = 4;         // vectors that may be read after the margin

  // Reads the symbols [sequence, sequence + length). Offsets up to `margin` may be asked for.
  void build(const char* sequence, std::size_t length, std::size_t margin);

  std::size_t length() const { return its_length; }
  std::size_t stretch() const { return its_stretch; }
  std::size_t margin() const { return its_margin; }
  bool has_Ns() const { return found_Ns; }

  // The words of a plane vector, and of such a word the lanes, that stand for symbols of the sequence.
  std::size_t words_in_use() const { return std::min(words, (its_length + 63) / 64); }
  std::uint64_t lanes_in_use(std::size_t word) const {
    const std::size_t left_over = its_length - 64 * word;
    return left_over < 64 ? ~(~std::uint64_t{0} << left_over) : ~std::uint64_t{0};
  }

  // The plane vector of index t, -margin <= t, followed by the ones after it.
  const std::uint64_t* low(std::ptrdiff_t t) const { return at(low_bits, t); }
  const std::uint64_t* high(std::ptrdiff_t t) const { return at(high_bits, t); }
  const std::uint64_t* Ns(std::ptrdiff_t t) const { return at(N_bits, t); }

 private:
  std::size_t its_length = 0;
  std::size_t its_stretch = 0;
  std::size_t its_margin = 0;
  bool found_Ns = false;
  std::vector<std::uint64_t> low_bits;
  std::vector<std::uint64_t> high_bits;
  std::vector<std::uint64_t> N_bits;

  const std::uint64_t* at(const std::vector<std::uint64_t>& plane, std::ptrdiff_t t) const {
    return plane.data() + static_cast<std::size_t>(t + static_cast<std::ptrdiff_t>(its_margin)) * words;
  }
  void lay_side_by_side(const std::vector<std::uint64_t>& linear, std::vector<std::uint64_t>& plane) const;
  void transpose(const std::vector<std::uint64_t>& linear, std::vector<std::uint64_t>& plane) const;
};
