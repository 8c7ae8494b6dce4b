// Seeded random numbers that are the same with every standard library (splitmix64, Steele, Lea and Flood 2014).
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string_view>

namespace differential {

class CRandom {
 public:
  explicit CRandom(std::uint64_t seed) : state(seed) {}

  std::uint64_t next() {
    state += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }

  // 0 .. bound - 1; bound is at least 1.
  std::size_t below(std::size_t bound) { return static_cast<std::size_t>(next() % bound); }

  // low .. high, both inclusive.
  int between(int low, int high) {
    return low + static_cast<int>(below(static_cast<std::size_t>(static_cast<long long>(high) - low + 1)));
  }

  bool percent(int chance) { return between(1, 100) <= chance; }

  // A number from 0 to high, small ones much oftener than large ones.
  int mostly_small(int high) { return between(0, between(0, between(0, high))); }

  template <typename T>
  T one_of(std::initializer_list<T> values) {
    return *std::next(values.begin(), static_cast<std::ptrdiff_t>(below(values.size())));
  }

  char symbol_of(std::string_view symbols) { return symbols[below(symbols.size())]; }

 private:
  std::uint64_t state;
};

// The seed of case number index in the series that begins with seed.
inline std::uint64_t seed_of_case(std::uint64_t seed, std::uint64_t index) {
  return CRandom(CRandom(seed).next() ^ (index * 0xD1B54A32D192ED03U)).next();
}

}  // namespace differential
