#include "case-sources.h"
#include "fasta-layout.h"
#include "sequence-maker.h"

namespace differential {

namespace {

test_case layout_case(std::uint64_t seed, std::uint64_t index) {
  CRandom random(seed_of_case(seed, index));
  const search_settings settings = cheap_settings(random);
  std::vector<fasta_record> records(random.below(6));
  for (fasta_record& record : records) {
    record = {random_header(random), make_sequence(random, settings, random.below(random.percent(30) ? 5 : 120))};
  }
  return {label_of("layout", seed, index), settings.options, wild_fasta(random, records),
          random.percent(70) ? names_with_results_file : names_with_standard_output};
}

}  // namespace

case_source layout_cases(std::uint64_t seed) {
  return [seed](std::uint64_t index) { return layout_case(seed, index); };
}

}  // namespace differential
