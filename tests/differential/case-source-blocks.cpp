#include <array>
#include <string>
#include <string_view>

#include "case-sources.h"
#include "random-numbers.h"

namespace differential {

namespace {

// The reader's block holds 1,000,000 bytes; from the second block on one of them is the last byte of the block before.
constexpr std::size_t first_block = 1000000;
constexpr std::size_t further_block = 999999;

constexpr std::array<std::string_view, 22> border_pieces{
    "A",        "\n",  "\r\n",  "\r",   "\r\r",     "\n\n",  "\n>next\n", "\r\n>n\r\n", "\r>n\r", "\n>two words\nAC",
    "acgtun",   "-*",  "NNRYK", "\n\r", "\r\n\r\n", "\n\n>", "\n>\n>",    "ACG1ACG",    "\n#",    " \n ",
    "\r\r\n>x", "\rAC"};

struct cut_piece {
  std::string_view piece;
  std::size_t before;  // bytes of the piece in front of the border
};

// Every piece cut at every place, one after the other.
cut_piece piece_with_index(std::uint64_t index) {
  for (;;) {
    for (const std::string_view piece : border_pieces) {
      if (index <= piece.size()) return {piece, static_cast<std::size_t>(index)};
      index -= piece.size() + 1;
    }
  }
}

void append_plain_up_to(std::string& text, std::size_t size, std::size_t line_length, CRandom& random) {
  while (text.size() + 12 < size) {
    text += random.symbol_of("ACGT");
    if (text.size() % line_length == 0) text += '\n';
  }
  while (text.size() < size) text += 'A';
}

test_case block_case(std::uint64_t seed, std::uint64_t index) {
  CRandom random(seed_of_case(seed, index));
  const cut_piece cut = piece_with_index(index);
  const std::size_t blocks = random.percent(80) ? 1 : 2;
  const std::size_t line_length = random.one_of<std::size_t>({60, 80, 99, 3 * first_block});
  std::string text = random.percent(50) ? ">s1 large\n" : ">s1\r\n";
  for (std::size_t block = 0; block < blocks; ++block) {
    append_plain_up_to(text, first_block + block * further_block - cut.before, line_length, random);
    text += cut.piece;
  }
  if (random.percent(70)) text += "ACGACGACGACGACG";
  if (random.percent(50)) text += '\n';
  return {label_of("blocks", seed, index),
          {{"-M", "exact"}, {"-U", "2"}, {"-s", "9"}, {"--maskX"}},
          text,
          names_with_results_file};
}

}  // namespace

case_source block_cases(std::uint64_t seed) {
  return [seed](std::uint64_t index) { return block_case(seed, index); };
}

}  // namespace differential
