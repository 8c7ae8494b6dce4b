#include <algorithm>

#include "case-sources.h"
#include "fasta-layout.h"
#include "reference-cost.h"
#include "sequence-maker.h"

namespace differential {

namespace {

std::size_t number_of_records(CRandom& random) {
  const int kind = random.between(1, 100);
  if (kind <= 55) return 1;
  if (kind <= 90) return 2 + random.below(4);
  return 5 + random.below(60);
}

// A few hundred symbols, sometimes thousands, sometimes none or nearly none, if the reference can afford them.
std::size_t length_of_record(CRandom& random, std::size_t affordable, std::size_t sufficient) {
  const int kind = random.between(1, 100);
  if (kind <= 5) return random.below(5);
  if (kind <= 25) return random.below(affordable) + 1;
  return std::min(affordable, sufficient + random.below(300));
}

std::vector<fasta_record> dense_records(CRandom& random, const search_settings& settings) {
  const std::size_t count = number_of_records(random);
  const double cost = (random.percent(5) ? generous_cost : ordinary_cost) / static_cast<double>(count);
  const std::size_t affordable = std::clamp<std::size_t>(affordable_symbols(settings, texture::dense, cost), 20, 4000);
  std::vector<fasta_record> records;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string header =
        random.percent(70) ? std::string("s").append(std::to_string(i + 1)) : random_header(random);
    const std::size_t length = length_of_record(random, affordable, sufficient_symbols(settings));
    records.push_back({header, make_sequence(random, settings, length)});
  }
  return records;
}

std::vector<fasta_record> sparse_record(CRandom& random, const search_settings& settings) {
  const std::size_t affordable =
      std::min<std::size_t>(20000, affordable_symbols(settings, texture::sparse, ordinary_cost));
  return {{"s1", make_sparse_sequence(random, settings, 1 + random.below(affordable))}};
}

test_case random_case(std::uint64_t seed, std::uint64_t index) {
  CRandom random(seed_of_case(seed, index));
  const search_settings settings = random_settings(random);
  const std::vector<fasta_record> records =
      random.percent(75) ? dense_records(random, settings) : sparse_record(random, settings);
  test_case made;
  made.label = label_of("random", seed, index);
  made.options = settings.options;
  made.fasta = random.percent(90) ? plain_fasta(records) : wild_fasta(random, records);
  if (random.percent(30)) made.file_names = names_with_standard_output;
  return made;
}

}  // namespace

case_source random_cases(std::uint64_t seed) {
  return [seed](std::uint64_t index) { return random_case(seed, index); };
}

}  // namespace differential
