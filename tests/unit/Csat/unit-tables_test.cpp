// The table of prime factors.

#include "unit-tables.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/repeats.h"

namespace {

texts row_of_primes(int n) {
  texts row;
  for (const int p : primeFactors[static_cast<std::size_t>(n)]) row.push_back(std::to_string(p));
  return row;
}

TEST(PrimeFactors, OfSomeNumbers) {
  EXPECT_EQ(row_of_primes(9), (texts{"3", "0", "0", "0", "0", "0"}));
  EXPECT_EQ(row_of_primes(10), (texts{"2", "5", "0", "0", "0", "0"}));
  EXPECT_EQ(row_of_primes(4), (texts{"2", "0", "0", "0", "0", "0"}));
  EXPECT_EQ(row_of_primes(12), (texts{"2", "3", "0", "0", "0", "0"}));
  EXPECT_EQ(row_of_primes(2310), (texts{"2", "3", "5", "7", "11", "0"}));
  EXPECT_EQ(row_of_primes(10000), (texts{"2", "5", "0", "0", "0", "0"}));
}

TEST(PrimeFactors, OfZeroAndOneAndAPrimeAreNone) {
  const texts none(6, "0");
  EXPECT_EQ(row_of_primes(0), none);
  EXPECT_EQ(row_of_primes(1), none);
  EXPECT_EQ(row_of_primes(2), none);
  EXPECT_EQ(row_of_primes(9973), none);
}

TEST(PrimeFactors, OfEveryNumberAreThoseOfTrialDivision) {
  const auto is_prime = [](int n) {
    for (int d = 2; d * d <= n; ++d) {
      if (n % d == 0) return false;
    }
    return n > 1;
  };
  for (int n = 1; n <= 10000; ++n) {
    std::vector<int> expected;
    for (int p = 2; p <= n / 2; ++p) {
      if (n % p == 0 && is_prime(p)) expected.push_back(p);
    }
    expected.resize(6, 0);
    const auto& row = primeFactors[static_cast<std::size_t>(n)];
    ASSERT_EQ(std::vector<int>(row.begin(), row.end()), expected) << n;
  }
}

}  // namespace
