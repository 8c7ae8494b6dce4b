#include <algorithm>

#include "case-sources.h"
#include "fasta-layout.h"
#include "reference-cost.h"
#include "sequence-maker.h"

namespace differential {

namespace {

constexpr std::size_t least_symbols = 70000;
constexpr std::size_t most_symbols = 300000;
constexpr std::size_t most_symbols_in_exact_mode = 1000000;

// Settings under which the reference searches a large record, if some turn up soon.
search_settings settings_for_large_records(CRandom& random) {
  search_settings settings;
  for (int i = 0; i < 100; ++i) {
    settings = random_settings(random);
    if (affordable_symbols(settings, texture::sparse, generous_cost) > least_symbols) break;
  }
  return settings;
}

// Just long enough for the default thresholds, or a little shorter or longer: at a border it is all or nothing.
std::string barely_a_repeat(CRandom& random, const search_settings& settings) {
  const int longest = std::min(settings.max_unit, 20);
  const int L = random.between(std::min(std::max(settings.min_unit, 1), longest), longest);
  const auto length = static_cast<std::size_t>(L + std::max(6, L) + random.between(-1, 4));
  std::string symbols;
  while (symbols.size() < length) {
    const bool is_first_unit = symbols.size() < static_cast<std::size_t>(L);
    symbols += is_first_unit ? random.symbol_of("ACGT") : symbols[symbols.size() - static_cast<std::size_t>(L)];
  }
  return symbols;
}

std::string repeats_for_a_border(CRandom& random, const search_settings& settings) {
  if (random.percent(60)) return barely_a_repeat(random, settings);
  return make_sequence(random, settings, 20 + random.below(random.percent(80) ? 150 : 1500));
}

// Puts repeats across the position, in the place of what stands there.
void plant_across(std::string& sequence, std::size_t position, CRandom& random, const search_settings& settings) {
  const std::string repeats = repeats_for_a_border(random, settings);
  const std::size_t before = std::min(position, random.below(repeats.size() + 1));
  const std::size_t begin = position - before;
  if (begin + repeats.size() <= sequence.size()) sequence.replace(begin, repeats.size(), repeats);
}

test_case large_case(std::uint64_t seed, std::uint64_t index) {
  CRandom random(seed_of_case(seed, index));
  const search_settings settings = settings_for_large_records(random);
  const std::size_t affordable = std::min(settings.mode == "exact" ? most_symbols_in_exact_mode : most_symbols,
                                          affordable_symbols(settings, texture::sparse, generous_cost));
  const std::string_view alphabet = random.one_of<std::string_view>({"ACGT", "ACGT", "AATTCG", "AC"});
  std::string sequence;
  while (sequence.size() < affordable) sequence += random.symbol_of(alphabet);
  const std::size_t block = std::size_t{1} << random.between(11, 16);
  for (std::size_t border = block; border < sequence.size(); border += block) {
    plant_across(sequence, border, random, settings);
  }
  return {label_of("large", seed, index), settings.options, plain_fasta({{"s1", sequence}}), names_with_results_file};
}

}  // namespace

case_source large_cases(std::uint64_t seed) {
  return [seed](std::uint64_t index) { return large_case(seed, index); };
}

}  // namespace differential
