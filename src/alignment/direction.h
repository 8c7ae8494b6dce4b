#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

// The two directions of an extension, so that each step of it is written once.
//
// A position lies between two symbols. `ahead` is the symbol that an extension examines next at a position, and `end`
// the position with nothing ahead: one past the last symbol to the right, the first symbol to the left. Units are read
// from a CUnitText with an index 0 .. L - 1 as cursor.

static_assert(std::endian::native == std::endian::little,
              "runs are compared eight symbols at a time, first one lowest");

inline constexpr int symbols_a_word = 8;

inline std::uint64_t load_word(const char* from) {
  std::uint64_t word = 0;
  std::memcpy(&word, from, sizeof word);
  return word;
}

struct rightwards {
  static char ahead(const char* position) { return *position; }
  static const char* step(const char* position) { return position + 1; }
  static const char* steps(const char* position, int count) { return position + count; }
  static std::ptrdiff_t left_over(const char* position, const char* end) { return end - position; }
  static int unit_step(int u, int L) { return u + 1 == L ? 0 : u + 1; }
  // How far `count` steps move a cursor, before it is reduced to 0 .. L - 1 (CUnitText::wrapped).
  static int unit_steps(int u, int count) { return u + count; }
  // Where in memory the next `count` symbols begin, and at which index the unit symbols that belong to them.
  static const char* first_of(const char* position, int /*count*/) { return position; }
  static int first_of(int u, int /*count*/) { return u; }
  // How many of the next eight symbols equal the unit's; `text` points at unit index 0 of a CUnitText.
  static int matches_of_word(const char* position, const char* text, int u) {
    const std::uint64_t different = load_word(position) ^ load_word(text + u);
    return different == 0 ? symbols_a_word : std::countr_zero(different) / 8;
  }
};

struct leftwards {
  static char ahead(const char* position) { return position[-1]; }
  static const char* step(const char* position) { return position - 1; }
  static const char* steps(const char* position, int count) { return position - count; }
  static std::ptrdiff_t left_over(const char* position, const char* end) { return position - end; }
  static int unit_step(int u, int L) { return u == 0 ? L - 1 : u - 1; }
  static int unit_steps(int u, int count) { return u - count; }
  static const char* first_of(const char* position, int count) { return position - count; }
  static int first_of(int u, int count) { return u + 1 - count; }
  static int matches_of_word(const char* position, const char* text, int u) {
    const std::uint64_t different = load_word(position - symbols_a_word) ^ load_word(text + u + 1 - symbols_a_word);
    return different == 0 ? symbols_a_word : std::countl_zero(different) / 8;
  }
};
