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
  return {label_of("layout", seed, index), settings.options, wild_fasta(random, records), random.percent(70)};
}

// What stands at the border of two blocks.
std::string border_piece(CRandom& random) {
  return random.one_of<const char*>({"\n", "\r\n", "\r", "\r\r", "\n\n", "\n>next\n", "\r\n>next\r\n", "\r>next\r",
                                     "\n>n", "acgtu", "-*", "NNRYK", "\n\n>", "\n>\n>two words\nACACAC", "ACG1ACG",
                                     "\n#", " \n ", "\r\n\r\n>x y\r\n\r\n"});
}

// The reader's block holds 1,000,000 bytes; from the second block on one of them is the last byte of the block before.
test_case block_case(std::uint64_t seed, std::uint64_t index) {
  constexpr std::size_t block = 1000000;
  CRandom random(seed_of_case(seed, index));
  const std::size_t blocks = 1 + random.below(2);
  const std::string header = random.percent(15) ? std::string(block - 5 + random.below(10), 'h') : "s1 large";
  std::string text = '>' + header + (random.percent(50) ? "\n" : "\r\n");
  const std::size_t line_length = random.one_of<std::size_t>({60, 80, 99, 3 * block});
  for (std::size_t border = block; border <= blocks * block; border += block - 1) {
    while (text.size() + 10 < border) {
      text += random.symbol_of("ACGT");
      if (text.size() % line_length == 0) text += '\n';
    }
    const std::size_t distance = random.below(8);
    while (text.size() + distance < border) text += 'A';
    text += border_piece(random);
  }
  if (random.percent(70)) text += "ACGACGACGACGACG";
  if (random.percent(50)) text += '\n';
  return {label_of("blocks", seed, index), {{"-M", "exact"}, {"-U", "2"}, {"-s", "9"}, {"--maskX"}}, text, true};
}

}  // namespace

case_source layout_cases(std::uint64_t seed) {
  return [seed](std::uint64_t index) { return layout_case(seed, index); };
}

case_source block_cases(std::uint64_t seed) {
  return [seed](std::uint64_t index) { return block_case(seed, index); };
}

}  // namespace differential
