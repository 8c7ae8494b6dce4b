#pragma once

#include <cstddef>
#include <random>
#include <string>

// Seeded random numbers and sequences; the same on every machine.
class CRandomDna {
 public:
  explicit CRandomDna(unsigned seed) : engine(seed) {}

  // A number in [low, high].
  int number(int low, int high) {
    const auto choices = static_cast<unsigned>(high) - static_cast<unsigned>(low) + 1U;
    const auto drawn = static_cast<unsigned>(engine());
    return static_cast<int>(static_cast<unsigned>(low) + (choices == 0 ? drawn : drawn % choices));
  }

  bool coin() { return number(0, 1) == 1; }

  template <typename Container>
  auto one_of(const Container& choices) {
    return choices[static_cast<std::size_t>(number(0, static_cast<int>(choices.size()) - 1))];
  }

  std::string sequence(const std::string& alphabet, int length) {
    std::string result;
    for (int i = 0; i < length; ++i) result += one_of(alphabet);
    return result;
  }

 private:
  std::mt19937 engine;
};
