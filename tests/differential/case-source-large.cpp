#include <algorithm>

#include "case-sources.h"
#include "fasta-layout.h"
#include "reference-cost.h"
#include "sequence-maker.h"

namespace differential {

namespace {

constexpr std::size_t least_symbols = 70000;
constexpr std::size_t most_symbols = 300000;

// Settings under which the reference searches a large record, if some turn up soon.
search_settings settings_for_large_records(CRandom& random) {
  search_settings settings;
  for (int i = 0; i < 100; ++i) {
    settings = random_settings(random);
    if (affordable_symbols(settings, texture::sparse, generous_cost) > least_symbols) break;
  }
  return settings;
}

// Puts repeats across the position, in the place of what stands there.
void plant_across(std::string& sequence, std::size_t position, CRandom& random, const search_settings& settings) {
  const std::string repeats = make_sequence(random, settings, 20 + random.below(random.percent(80) ? 150 : 1500));
  const std::size_t before = std::min(position, random.below(repeats.size() + 1));
  const std::size_t begin = position - before;
  if (begin + repeats.size() <= sequence.size()) sequence.replace(begin, repeats.size(), repeats);
}

test_case large_case(std::uint64_t seed, std::uint64_t index) {
  CRandom random(seed_of_case(seed, index));
  const search_settings settings = settings_for_large_records(random);
  const std::size_t affordable = std::min(most_symbols, affordable_symbols(settings, texture::sparse, generous_cost));
  const std::string_view alphabet = random.one_of<std::string_view>({"ACGT", "ACGT", "AATTCG", "AC"});
  std::string sequence;
  while (sequence.size() < affordable) sequence += random.symbol_of(alphabet);
  const std::size_t block = std::size_t{1} << random.between(11, 16);
  for (std::size_t border = block; border < sequence.size(); border += block) {
    plant_across(sequence, border, random, settings);
  }
  return {label_of("large", seed, index), settings.options, plain_fasta({{"s1", sequence}}), true};
}

}  // namespace

case_source large_cases(std::uint64_t seed) {
  return [seed](std::uint64_t index) { return large_case(seed, index); };
}

}  // namespace differential
