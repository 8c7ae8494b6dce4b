#include "support.h"

#include <algorithm>
#include <cstdint>
#include <ctime>

#include "CSearchController.h"
#include "global-types-and-parameters.h"
#include "quarvo-messages.h"

namespace {

// Splitmix64, by Sebastiano Vigna (public domain): the numbers of the standard library differ between makers.
class CRandom {
 public:
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(next() % limit); }
  char symbol() { return "ACGT"[below(4)]; }

 private:
  std::uint64_t state = 20240607;

  std::uint64_t next() {
    std::uint64_t z = state += 0x9e3779b97f4a7c15U;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
    return z ^ (z >> 31);
  }
};

void append_random(std::string& text, std::size_t count, CRandom& random) {
  for (; count > 0; --count) text.push_back(random.symbol());
}

void append_edit(std::string& text, char symbol, CRandom& random) {
  switch (random.below(3)) {
    case 0:
      text.push_back(random.symbol());
      break;
    case 1:
      text.push_back(random.symbol());
      text.push_back(symbol);
      break;
    default:
      break;
  }
}

void append_repeat(std::string& text, std::size_t length, unsigned longest_unit, CRandom& random) {
  std::string unit;
  append_random(unit, 1 + random.below(longest_unit), random);
  for (std::size_t i = 0; i < length; ++i) {
    const char symbol = unit[i % unit.size()];
    if (random.below(20) == 0) {
      append_edit(text, symbol, random);
    } else {
      text.push_back(symbol);
    }
  }
}

}  // namespace

std::string random_sequence(std::size_t length) {
  CRandom random;
  std::string text;
  append_random(text, length, random);
  return text;
}

std::string sequence_with_repeats(std::size_t length, unsigned longest_unit) {
  CRandom random;
  std::string text;
  while (text.size() < length) {
    const std::size_t after = text.size() + 1000;
    append_repeat(text, 40 + random.below(201), longest_unit, random);
    append_random(text, after - std::min(after, text.size()), random);
  }
  text.resize(length);
  return text;
}

void fill(CSequence_Mol& record, const std::string& text) {
  record.full_name.assign("benchmark");
  record.short_name.assign("benchmark");
  record.symbols.assign(text.data(), text.data() + text.size());
}

void set_parameters(unsigned longest_unit) {
  init_param();
  global_max_unit_length = longest_unit;
  time_analysis_started = std::time(nullptr);
  update_report_time();
  CSearchController::reset_minimum_arrays();
}

double share_of(const CPositionSet& positions) {
  std::size_t count = 0;
  for (std::size_t p = positions.next(0); p != positions.end(); p = positions.next(p + 1)) ++count;
  return static_cast<double>(count) / static_cast<double>(positions.end());
}

alignment_bound default_bound(unsigned L) { return {L, 5, 5, static_cast<int>(L), static_cast<int>(std::max(6U, L))}; }
