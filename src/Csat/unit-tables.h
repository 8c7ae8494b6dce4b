#pragma once

#include <array>

// The distinct proper prime factors of 0 .. 10000, ascending; each row ends in zeros. A prime is not in its own row.
inline constexpr int primeFactors_rows = 10001;
inline constexpr int primeFactors_columns = 6;
extern const std::array<std::array<int, primeFactors_columns>, primeFactors_rows> primeFactors;
