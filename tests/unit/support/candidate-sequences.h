#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "candidate-filter.h"
#include "random-dna.h"
#include "test-data.h"

// Sequences whose candidates of a unit length lie on both sides of what is accepted, and close to it.
class CCandidateSequences {
 public:
  explicit CCandidateSequences(CRandomDna& source) : random(source) {}

  // A length at or near one where the handling of records or their parts changes, or any other up to 700.
  int length() {
    switch (random.number(0, 3)) {
      case 0:
        return random.number(0, 700);
      case 1:
        return static_cast<int>(longest_short_record) + random.number(-1, 1);
      case 2:
        return 512 * random.number(1, 4) + random.number(-1, 1);
      default:
        return 64 * random.number(1, 12) + random.number(-1, 1);
    }
  }

  // `length` symbols with something in them for unit length L, and for the minimum score T.
  std::string make(int length, int L, int T) {
    std::string text;
    switch (random.number(0, 5)) {
      case 0:
        text = random.sequence(random.coin() ? "ACGT" : "AAAATTTC", length);
        break;
      case 1:
        text = random.sequence(random.coin() ? "AC" : "AAAT", length);
        break;
      case 2:
        text = excerpt(random.coin() ? at_rich : satellite, length);
        break;
      case 3:
        text = random.sequence("ACGT", length);
        plant_at_multiples(text, L);
        break;
      default:
        while (static_cast<int>(text.size()) < length) {
          text += random.coin() ? array_of(L) : partial_copies(L, T);
          text += random.sequence("ACGT", random.number(0, 12));
        }
    }
    text.resize(static_cast<std::size_t>(length), 'G');
    if (random.coin()) add_Ns(text);
    return text;
  }

  // Copies of one unit, each with a share of mutations of its own.
  std::string array_of(int L) {
    const std::string unit = random.sequence(random.number(0, 3) == 0 ? "AC" : "ACGT", L);
    std::string text;
    for (int copies = random.number(2, 6); copies > 0; --copies) {
      const int mutations = random.one_of(std::vector<int>{0, 0, 5, 10, 20, 30});
      for (const char symbol : unit) {
        const bool is_mutated = random.number(0, 99) < mutations;
        text += is_mutated ? mutated(symbol) : std::string(1, symbol);
      }
    }
    return text;
  }

  // A repeat in which the copy on one side of a unit costs an extension nearly all that it may lose, for the penalty of
  // a mismatch, before it comes to perfect copies after. On the other side there may be some matches to start from.
  std::string with_decayed_copy(int L, int penalty) {
    const std::string unit = random.sequence("ACGT", L);
    const std::string copies = unit + unit + unit;
    const int matches = random.number(0, L / 8);
    const auto some = static_cast<std::size_t>(matches);
    if (random.coin()) return unit.substr(unit.size() - some) + unit + decayed(unit, penalty) + copies;
    return copies + decayed(unit, penalty) + unit + unit.substr(0, some);
  }

  // Overwrites runs of N's, of lengths around what may be passed over.
  void add_Ns(std::string& text) {
    if (text.empty()) return;
    for (int runs = random.number(1, 5); runs > 0; --runs) put_Ns(text, any_position(text), random.number(1, 5));
    if (random.number(0, 3) == 0) put_Ns(text, 0, random.number(1, 5));
    if (random.number(0, 3) == 0) {
      const int run = std::min(random.number(1, 5), static_cast<int>(text.size()));
      put_Ns(text, text.size() - static_cast<std::size_t>(run), run);
    }
  }

  static void put_Ns(std::string& text, std::size_t at, int count) {
    for (; count > 0 && at < text.size(); --count) text[at++] = 'N';
  }

 private:
  CRandomDna& random;
  const std::string at_rich = symbols_of_data_file("dictyostelium_at_rich.fa");
  const std::string satellite = symbols_of_data_file("human_alpha_satellite.fa");

  std::size_t any_position(const std::string& text) {
    return static_cast<std::size_t>(random.number(0, static_cast<int>(text.size()) - 1));
  }

  std::string excerpt(const std::string& of, int length) {
    std::string text;
    while (static_cast<int>(text.size()) < length) {
      text += of.substr(any_position(of), static_cast<std::size_t>(length));
    }
    return text;
  }

  std::string mutated(char symbol) {
    switch (random.number(0, 2)) {
      case 0:
        return random.sequence("ACGT", 1);
      case 1:
        return std::string(1, symbol) + random.sequence("ACGT", 1);
      default:
        return "";
    }
  }

  // Every (penalty + 1) / 2 symbols a mismatch, which loses a point a symbol.
  std::string decayed(std::string unit, int penalty) {
    const int block = (penalty + 1) / 2;
    const int phase = random.number(0, block - 1);
    const auto length = static_cast<int>(unit.size());
    for (int i = phase; i < length; i += block) {
      char& symbol = unit[static_cast<std::size_t>(std::clamp(i + random.number(-1, 1), 0, length - 1))];
      if (random.number(0, 2 * length / block) != 0) symbol = symbol == 'A' ? 'C' : symbol == 'C' ? 'G' : 'A';
    }
    return unit;
  }

  // A unit between a suffix and a prefix of it that have about T symbols together.
  std::string partial_copies(int L, int T) {
    const std::string unit = random.sequence("ACGT", L);
    const int together = std::clamp(T + random.number(-1, 2), 0, 2 * L);
    const int right = std::clamp(together / 2 + random.number(-2, 2), 0, std::min(L, together));
    const int left = std::min(together - right, L);
    return unit.substr(static_cast<std::size_t>(L - left)) + unit + unit.substr(0, static_cast<std::size_t>(right));
  }

  // Repeats across the borders of vectors and of the stretches that a sequence is cut into.
  void plant_at_multiples(std::string& text, int L) {
    const auto length = static_cast<int>(text.size());
    const int stretch = std::max(1, (length + 511) / 512);
    const int distance = random.one_of(std::vector<int>{64, 128, 16 * stretch, 64 * stretch, std::max(1, length / 4)});
    for (int border = distance; border < length; border += distance) {
      if (random.number(0, 2) != 0) continue;
      const std::string planted = array_of(L);
      const auto size = static_cast<int>(planted.size());
      const int at = border - random.number(0, size);
      for (int i = std::max(0, -at); i < size && at + i < length; ++i) {
        text[static_cast<std::size_t>(at + i)] = planted[static_cast<std::size_t>(i)];
      }
    }
  }
};
