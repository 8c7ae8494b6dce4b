#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "case-sources.h"
#include "printable-text.h"
#include "sequence-maker.h"
#include "shrinker.h"

namespace differential {
namespace {

// The sequences of a file, without headers and line ends.
std::vector<std::string> sequences_of(const std::string& fasta) {
  std::vector<std::string> sequences;
  for (std::string record : cut_into_records(fasta)) {
    record.erase(0, record.find('\n') + 1);
    std::erase(record, '\n');
    sequences.push_back(record);
  }
  return sequences;
}

TEST(case_sources, make_the_same_case_again_from_seed_and_index) {
  for (const auto& source_of : {random_cases, sweep_cases, layout_cases}) {
    for (std::uint64_t index = 0; index < 20; ++index) {
      const auto once = source_of(7)(index);
      const auto again = source_of(7)(index);
      ASSERT_TRUE(once && again);
      EXPECT_EQ(once->fasta, again->fasta);
      EXPECT_EQ(command_words(*once), command_words(*again));
    }
  }
}

TEST(case_sources, make_other_cases_from_other_seeds_and_indices) {
  std::set<std::string> files;
  for (std::uint64_t seed = 1; seed <= 3; ++seed) {
    for (std::uint64_t index = 0; index < 20; ++index) files.insert(random_cases(seed)(index)->fasta);
  }
  EXPECT_GT(files.size(), 55U);
}

// The first settings of the table: every sequence over A and C, each once, in the order of their lengths.
TEST(case_sources, exhaust_all_sequences_up_to_a_length) {
  std::set<std::string> sequences;
  const auto first_options = exhaustive_cases()(0)->options;
  for (std::uint64_t index = 0; exhaustive_cases()(index)->options == first_options; ++index) {
    for (const std::string& text : sequences_of(exhaustive_cases()(index)->fasta)) {
      EXPECT_TRUE(sequences.insert(text).second) << text;
    }
  }
  std::size_t longest = 0;
  for (const std::string& sequence : sequences) longest = std::max(longest, sequence.size());
  EXPECT_GE(longest, 12U);
  EXPECT_EQ(sequences.size(), (std::size_t{2} << longest) - 1);
}

TEST(case_sources, exhaustive_series_ends) { EXPECT_FALSE(exhaustive_cases()(100000)); }

TEST(sequence_maker, makes_the_symbols_of_the_program_only) {
  CRandom random(3);
  for (int i = 0; i < 300; ++i) {
    const search_settings settings = random_settings(random);
    const std::string symbols = make_sequence(random, settings, random.below(400));
    EXPECT_EQ(symbols.find_first_not_of("ACGTN"), std::string::npos) << symbols;
  }
}

TEST(printable, makes_text_that_printf_turns_back) {
  EXPECT_EQ(printable(std::string_view(">a\n\r\0%\\'z\xff", 10)), ">a\\n\\015\\000\\045\\134\\047z\\377");
}

TEST(printing_command, writes_long_runs_as_such) {
  EXPECT_EQ(printing_command(">a\nAAC"), "printf '>a\\nAAC'");
  EXPECT_EQ(printing_command(">\n" + std::string(500, 'N') + "A"),
            "printf '>\\n'; printf 'N%.0s' $(seq 500); printf 'A'");
}

TEST(command_line, quotes_what_the_shell_would_change) {
  test_case tested;
  tested.options = {{"-s", "4"}, {"it's", ""}};
  EXPECT_EQ(command_line("quarvo", tested), "quarvo -s 4 'it'\\''s' '' in.fa results");
}

}  // namespace
}  // namespace differential
