#include "sequence-maker.h"

#include <algorithm>
#include <string_view>

namespace differential {

namespace {

class CSequenceMaker {
 public:
  CSequenceMaker(CRandom& source, const search_settings& searched, std::size_t symbols)
      : random(source), settings(searched), wanted(symbols) {}

  std::string make_dense() {
    alphabet = random.one_of<std::string_view>({"AC", "AC", "AT", "ACGT", "ACGT", "ACGT", "AAATTTCG", "AAAAAC", "CG"});
    const bool begins_plain = random.percent(60);
    if (begins_plain) append_plain();
    while (sequence.size() < wanted) append_piece();
    if (sequence.size() > wanted + 20) sequence.resize(wanted);
    if (random.percent(40)) sprinkle_N_runs();
    if (random.percent(20)) nest_a_repeat();
    return std::move(sequence);
  }

  std::string make_sparse() {
    alphabet = random.one_of<std::string_view>({"ACGT", "ACGT", "ACGT", "AAATTTCG", "AAAAATTTTTCG", "AAAAATG", "AC"});
    const std::size_t longest_gap = random.one_of<std::size_t>({60, 300, 1500});
    while (sequence.size() < wanted) {
      sequence += plain(random.below(longest_gap));
      append_piece();
    }
    sequence.resize(wanted);
    return std::move(sequence);
  }

 private:
  CRandom& random;
  const search_settings& settings;
  std::size_t wanted;
  std::string_view alphabet;
  std::string sequence;

  std::string plain(std::size_t length) {
    std::string symbols;
    while (symbols.size() < length) symbols += random.symbol_of(alphabet);
    return symbols;
  }

  // Nearly one symbol, or nearly one short pattern.
  std::string low_complexity(std::size_t length) {
    std::string symbols = plain(1);
    while (symbols.size() < length) symbols += random.percent(85) ? symbols.back() : random.symbol_of(alphabet);
    return symbols;
  }

  void append_piece() {
    const int kind = random.between(1, 100);
    if (kind <= 55) {
      sequence += repeat();
    } else if (kind <= 70) {
      append_overlapping_repeat();
    } else if (kind <= 85) {
      append_plain();
    } else if (kind <= 92) {
      sequence += low_complexity(random.below(30));
    } else if (kind <= 96) {
      append_copy();
    } else {
      sequence += N_run();
    }
  }

  void append_plain() { sequence += plain(random.below(static_cast<std::size_t>(random.one_of({3, 10, 40})))); }

  std::string N_run() {
    const int allowed = std::clamp(settings.Ns_in_a_row, 0, 30);
    const int length = random.percent(80) ? allowed + random.between(-1, 1) : random.between(0, 2 * allowed + 3);
    return std::string(static_cast<std::size_t>(std::max(1, length)), 'N');
  }

  std::size_t unit_length() {
    const int low = std::max(settings.min_unit, 1);
    const int high = std::min(settings.max_unit, std::max(low, static_cast<int>(wanted)));
    const int kind = random.between(1, 100);
    if (kind <= 10) return static_cast<std::size_t>(random.between(1, high + 3));
    if (kind <= 25) return static_cast<std::size_t>(high);
    if (kind <= 60) return static_cast<std::size_t>(low + random.mostly_small(std::max(high - low, 0)));
    return static_cast<std::size_t>(random.between(low, std::max(low, high)));
  }

  // A unit may itself be a repeat of something shorter, or hold an N.
  std::string unit() {
    const std::size_t length = unit_length();
    const int kind = random.between(1, 100);
    if (kind <= 12) return low_complexity(length);
    if (kind <= 24) return copies(plain(1 + random.below(std::max<std::size_t>(1, length / 2))), length);
    std::string symbols = plain(length);
    if (kind <= 28) symbols[random.below(length)] = 'N';
    return symbols;
  }

  static std::string copies(const std::string& unit, std::size_t length) {
    std::string symbols;
    while (symbols.size() < length) symbols += unit;
    symbols.resize(length);
    return symbols;
  }

  std::string repeat() { return repeat_of(unit()); }

  std::string repeat_of(const std::string& unit) {
    const std::size_t most = unit.size() * static_cast<std::size_t>(random.between(2, 9));
    std::string symbols = copies(unit, unit.size() + random.below(most));
    mutate(symbols);
    return symbols;
  }

  // None, a few edits, or a rate; N runs at any place of the repeat.
  void mutate(std::string& symbols) {
    const int kind = random.between(1, 100);
    if (kind <= 25) return;
    const std::size_t edits =
        kind <= 65 ? 1 + random.below(3) : symbols.size() * static_cast<std::size_t>(random.between(2, 25)) / 100;
    for (std::size_t i = 0; i < edits; ++i) mutate_once(symbols);
  }

  void mutate_once(std::string& symbols) {
    const std::size_t at = random.below(symbols.size() + 1);
    const int kind = random.between(1, 100);
    if (kind <= 35 && at < symbols.size()) {
      symbols[at] = random.symbol_of(alphabet);
    } else if (kind <= 55) {
      symbols.insert(at, plain(1));
    } else if (kind <= 60) {
      symbols.insert(at, plain(1 + random.below(4)));
    } else if (kind <= 85) {
      symbols.erase(at, 1 + random.below(random.percent(85) ? 1 : 4));
    } else if (kind <= 93) {
      overwrite(symbols, at, N_run());
    } else {
      symbols.insert(at, N_run());
    }
  }

  static void overwrite(std::string& symbols, std::size_t at, const std::string& with) {
    symbols.replace(at, std::min(with.size(), symbols.size() - at), with);
  }

  // The unit begins with the last symbols that are already there.
  void append_overlapping_repeat() {
    const std::size_t shared = std::min(sequence.size(), random.below(unit_length() + 1));
    const std::string tail = sequence.substr(sequence.size() - shared);
    std::string whole = tail + plain(random.below(4));
    if (whole.empty()) whole = plain(1);
    sequence.resize(sequence.size() - shared);
    sequence += repeat_of(whole);
  }

  void append_copy() {
    if (sequence.empty()) return;
    const std::size_t begin = random.below(sequence.size());
    sequence += sequence.substr(begin, random.below(60));
  }

  void sprinkle_N_runs() {
    for (std::size_t i = 1 + random.below(1 + sequence.size() / 50); i > 0; --i) {
      const std::size_t at = random.below(sequence.size() + 1);
      if (random.percent(50)) {
        overwrite(sequence, at, N_run());
      } else {
        sequence.insert(at, N_run());
      }
    }
  }

  void nest_a_repeat() {
    const std::string inner = repeat();
    sequence.insert(random.below(sequence.size() + 1), inner.substr(0, 2 + wanted / 4));
  }
};

}  // namespace

std::string make_sequence(CRandom& random, const search_settings& settings, std::size_t symbols) {
  return CSequenceMaker(random, settings, symbols).make_dense();
}

std::string make_sparse_sequence(CRandom& random, const search_settings& settings, std::size_t symbols) {
  return CSequenceMaker(random, settings, symbols).make_sparse();
}

}  // namespace differential
