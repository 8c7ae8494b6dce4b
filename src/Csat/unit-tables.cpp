#include "unit-tables.h"

#include <cstddef>

namespace {

using prime_table = std::array<std::array<int, primeFactors_columns>, primeFactors_rows>;

// A sieve: each prime p is appended to the rows of its multiples above p.
constexpr prime_table make_prime_factors() {
  prime_table table{};
  std::array<int, primeFactors_rows> entries{};
  for (int p = 2; p < primeFactors_rows; ++p) {
    if (entries[static_cast<std::size_t>(p)] != 0) continue;
    for (auto n = static_cast<std::size_t>(2 * p); n < primeFactors_rows; n += static_cast<std::size_t>(p)) {
      table[n][static_cast<std::size_t>(entries[n]++)] = p;
    }
  }
  return table;
}

}  // namespace

// Made by the compiler: a start of the program takes some milliseconds, and this would be a part of it.
constinit const prime_table primeFactors = make_prime_factors();
