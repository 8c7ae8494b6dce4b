#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

// Which start positions of the exact search can lead to a repeat that is stored.
//
// Contract: for the sequence [begin, end) and one unit length L, every position p is kept whose unit [p, p + L) extends
// to a perfect repeat that reaches the wanted number of matches, see wanted_matches(). Others may be kept too.
// Positions are asked for in ascending order.
//
// Argument. Let the repeat be [left, right), L <= right - left. All its symbols but N's that were passed over are equal
// at distance L, so E[i] (the symbols at i and i + L are equal, or one of them is an N and N's are neutral) holds for
// all of the right - left - L positions i in [left, right - L). The score counts some of these positions, so score <=
// right - left - L, and the length of a perfect repeat is right - left. A repeat that reaches both thresholds therefore
// has right - left - L >= K = wanted_matches(). The start p lies in [left, right - L]: inside a run of K or more
// positions with E, or directly after one. Both hold as well for any smaller K, so K is cut at `longest_run`.
//
// With B the set of positions i at which E holds for i .. i + K - 1, the starts kept are thus those with a member of B
// in [p - K, p]. B is made a block at a time from vector compares, 64 positions a word, by shifting the words over each
// other in log2(K) steps. Cost: two loads a vector of positions and unit length, 1/8 byte a position of a block.
//
// For example, L = 3 and K = 4, found in two steps (runs of 2, then of 4):
//
//   position      0 1 2 3 4 5 6 7 8 9 10 11
//   symbol        T G A C G A C G A A C  T      the repeat is [1, 9), with 9 - 1 - 3 = 5 matches
//   E             0 1 1 1 1 1 0 0 0             E[1]: G at 1 and at 4
//   E at i, i+1   0 1 1 1 1 0 0 0 0             the word and itself shifted by 1
//   B             0 1 1 0 0 0 0 0 0             that and itself shifted by 2
//   kept          0 1 1 1 1 1 1 0 0             up to 4 past a member of B
//
// Asked for the first start from 0 on, the filter finds the member 1 and answers 1; from 7 on, it finds no member from
// 7 - 4 on and answers the end. Stretches without a repeat are thus passed 64 positions at a time.
//
// Premises: none; with K < 1 every position is kept. Not for use by several threads at once.
class CRunFilter {
 public:
  static constexpr std::ptrdiff_t longest_run = 512;
  static constexpr std::size_t block_words = 1024;  // of 64 positions

  // The number of matches that a stored repeat has at least outside its first unit, N's counted.
  static int wanted_matches(unsigned L, int min_score, int min_length);

  // For the units of length 1 <= L < end - begin. The sequence must outlive the filter and not change.
  CRunFilter(const char* begin, const char* end, unsigned L, int wanted_matches, bool Ns_are_neutral);

  // The first position at or after p that is kept; end - L if there is none in front of it. Precondition: begin <= p,
  // and no smaller p than asked before.
  const char* first_kept(const char* p) {
    if (K < 1) return p;
    const std::ptrdiff_t position = p - begin;
    const std::ptrdiff_t member = first_member(position - K);
    return begin + (position > member ? position : member);
  }

 private:
  static constexpr std::size_t look_ahead_words = longest_run / 64;
  static constexpr std::size_t spare_words = 16;  // whole vectors and shifts may go beyond the words in use

  const char* begin;
  std::ptrdiff_t L;
  std::ptrdiff_t K;
  bool Ns_match;
  std::ptrdiff_t starts;           // positions with a symbol at distance L
  std::ptrdiff_t block_begin = 0;  // a multiple of 64
  std::ptrdiff_t block_end = 0;
  alignas(64) std::array<std::uint64_t, block_words + look_ahead_words + spare_words> members;  // B of the block

  std::ptrdiff_t first_member(std::ptrdiff_t from);
  void load_block(std::ptrdiff_t from);
};

// The first position after p, in (p, end], whose symbol is not the one at p. Precondition: p < end.
const char* end_of_one_symbol_run(const char* p, const char* end);

// Bit i % 64 of word i / 64: the symbol at begin + i is followed by another one, and neither is an N. There is one word
// more than that of the end.
std::vector<std::uint64_t> changes_of_symbol(const char* begin, const char* end);
