// Whatever is written after an option: the program ends in time, with a documented status and a message where it
// refuses, with results that a sequence of this length can have, and in all else as the reference does.
//
// The options come from the program's own table, so a new one is tried as soon as it stands there.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <set>

#include "comparison.h"
#include "files.h"
#include "odd-words.h"
#include "printable-text.h"
#include "reported-numbers.h"

namespace {

namespace fs = std::filesystem;

using differential::option_words;
using differential::run_outcome;
using differential::test_case;

constexpr int program_limit_in_seconds = QUARVO_IS_SANITIZED ? 120 : 20;
constexpr int reference_limit_in_seconds = 5;

constexpr std::size_t symbols_of_a_record = 124;
const std::string fasta =
    ">one first record\n"
    "GATTACACACACACACNNACACGTACGGGGGGGTTTNNNNNAGCAGCAGCAGAAGCAGCAGC\n"
    "TTGACCTTGACCTTGACCTTGTCCTTGACCTTGACNCATATATATTATATATATGCCCCCCC\n"
    ">two\n"
    "acgtacgtacgtacggtacgtacgtacgtnacgtacgtttttttttttttttttttttttaa\n"
    "CAGGCATTACAGGCATTACAGGCATACAGGCATTACAGGCATTARCAGGCATTACAGGCATT\n";

// The statuses of refused values, of unusable file names and of a run to the end; as the shell sees them.
const std::set<int> documented_statuses{0, 1, 154, 155, 231, 254, 255};

const char* const signs_of_a_message[] = {"PARSE ERROR", "Sorry", "Error: ", "I think you have made a mistake here",
                                          "An error occurred"};

bool holds_message(const std::string& text) {
  return std::any_of(std::begin(signs_of_a_message), std::end(signs_of_a_message),
                     [&](const char* sign) { return text.find(sign) != std::string::npos; });
}

int format_of(const std::string& results) {
  constexpr std::array names{"quarvo format", "extended quarvo format", "gff", "one-per-line format", "fasta format"};
  const std::string label = "Output format:";
  std::size_t at = results.find(label);
  if (at == std::string::npos) return -1;
  at = results.find_first_not_of(" \t", at + label.size());
  const std::string value = results.substr(at, results.find('\n', at) - at);
  const auto found = std::find(names.begin(), names.end(), value);
  return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

void expect_possible(const reported_numbers& repeat) {
  SCOPED_TRACE(repeat.line);
  constexpr auto symbols = static_cast<long long>(symbols_of_a_record);
  EXPECT_GE(repeat.start, 1);
  EXPECT_LE(repeat.start, repeat.end);
  EXPECT_LE(repeat.end, symbols);
  // A copy of the unit may be written where it is deleted, so that a repeat is longer than what it covers.
  constexpr long long most = 4 * symbols;
  for (const long long count : repeat.counts) {
    EXPECT_GE(count, 0);
    EXPECT_LE(count, most);
  }
  for (const double ratio : repeat.ratios) EXPECT_TRUE(std::isfinite(ratio)) << ratio;
}

class OptionLimits : public ::testing::Test {
 protected:
  // Tries the options with and without a results file by turns.
  int try_words(const std::vector<option_words>& options) {
    test_case tested;
    tested.options = options;
    tested.fasta = fasta;
    if (tried++ % 4 == 3) tested.file_names = differential::names_with_standard_output;
    return try_case(tested);
  }

  // Returns the exit status.
  int try_case(const test_case& tested) {
    SCOPED_TRACE(differential::command_line("quarvo", tested));
    const run_outcome outcome = program.run(tested, program_limit_in_seconds);
    EXPECT_TRUE(outcome.ended) << "The program did not end.";
    EXPECT_EQ(documented_statuses.count(outcome.status), 1U) << "status " << outcome.status << "\n"
                                                             << outcome.files.at("stderr");
    if (outcome.status == 0) {
      expect_possible_results(outcome);
    } else {
      expect_refusal(outcome);
    }
    compare_with_reference(tested, outcome);
    return outcome.status;
  }

  // The reference may be too slow for a few, or the comparison would be an empty one.
  void expect_most_compared(std::size_t least) const {
    EXPECT_GE(tried, least);
    EXPECT_LE(too_slow * 10, tried) << too_slow << " of " << tried;
  }

  std::size_t repeats_seen = 0;

 private:
  fs::path scratch = differential::make_directory(fs::temp_directory_path());
  struct removal {
    const fs::path& path;
    ~removal() {
      std::error_code ignored;
      fs::remove_all(path, ignored);
    }
  } remove_scratch{scratch};
  differential::CRunner program{QUARVO_PROGRAM, scratch};
  differential::CRunner reference{QUARVO_REFERENCE, scratch};
  std::size_t tried = 0;
  std::size_t too_slow = 0;

  static void expect_refusal(const run_outcome& outcome) {
    EXPECT_TRUE(holds_message(outcome.files.at("stderr"))) << outcome.files.at("stderr");
    if (outcome.status != 231) {
      EXPECT_EQ(outcome.files.count("results"), 0U) << "The results file was touched.";
      EXPECT_EQ(outcome.files.count("in.fa.masked"), 0U) << "The masked file was touched.";
    }
  }

  void expect_possible_results(const run_outcome& outcome) {
    const auto file = outcome.files.find("results");
    const std::string& results = file == outcome.files.end() ? outcome.files.at("stdout") : file->second;
    const int format = format_of(results);
    ASSERT_NE(format, -1) << results;
    for (const reported_numbers& repeat : repeats_in(results, format)) {
      ++repeats_seen;
      expect_possible(repeat);
    }
  }

  void compare_with_reference(const test_case& tested, const run_outcome& outcome) {
    const run_outcome other = reference.run(tested, reference_limit_in_seconds);
    if (!other.ended) {
      ++too_slow;
      return;
    }
    if (const auto found = differential::compare(outcome, other))
      ADD_FAILURE() << found->channel << ": " << found->text;
  }
};

std::string name_of_option(const ::testing::TestParamInfo<std::size_t>& info) {
  return option_table()[info.param].long_name;
}

class EachOption : public OptionLimits, public ::testing::WithParamInterface<std::size_t> {
 protected:
  const option_row& option = option_table()[GetParam()];
};

// Under sanitizers, which take their time, the short and the long form by turns.
TEST_P(EachOption, TakesOrRefusesEveryValue) {
  std::size_t turn = 0;
  for (const char* const value : odd_values()) {
    const std::vector<option_words> forms = spellings(option, value);
    ++turn;
    for (std::size_t i = 0; i < forms.size() && !HasFailure(); ++i) {
      if (!QUARVO_IS_SANITIZED || i == turn % forms.size()) try_words({forms[i]});
    }
  }
  expect_most_compared(odd_values().size());
}

TEST_P(EachOption, IsRefusedTwice) {
  for (const char* const value : {"3", "-3", "exact", ""}) {
    for (const option_words& words : spellings(option, value)) EXPECT_NE(try_words({words, words}), 0);
  }
}

TEST_P(EachOption, IsRefusedWithoutAWordForItsValue) {
  const std::string name = std::string("--") + option.long_name;
  test_case tested;
  tested.fasta = fasta;
  tested.file_names = {"in.fa", "results", name + "=3"};
  EXPECT_EQ(try_case(tested), 1);
  tested.file_names = {"in.fa", "results", name};
  const bool needs_no_value = std::holds_alternative<bool*>(option.destination);
  EXPECT_EQ(try_case(tested), needs_no_value ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Table, EachOption, ::testing::Range<std::size_t>(0, option_table().size()), name_of_option);

class OptionsTogether : public OptionLimits, public ::testing::WithParamInterface<int> {};

TEST_P(OptionsTogether, AreTakenOrRefused) {
  constexpr int commands = QUARVO_IS_SANITIZED ? 20 : 200;
  const auto table = option_table();
  differential::CRandom random(differential::seed_of_case(1, static_cast<std::uint64_t>(GetParam())));
  for (int i = 0; i < commands && !HasFailure(); ++i) {
    std::vector<option_words> options;
    for (int wanted = random.one_of({2, 2, 2, 3, 5}); wanted > 0; --wanted) {
      options.push_back(random_words(table[random.below(table.size())], random));
    }
    try_words(options);
  }
  expect_most_compared(commands);
}

INSTANTIATE_TEST_SUITE_P(Seeds, OptionsTogether, ::testing::Range(0, 10));

class ReportedNumbers : public OptionLimits, public ::testing::WithParamInterface<int> {};

// What is checked above is there to be checked.
TEST_P(ReportedNumbers, AreFoundInEveryFormat) {
  try_words({{"--outputFormat", std::to_string(GetParam())}});
  EXPECT_GE(repeats_seen, 8U);
}

INSTANTIATE_TEST_SUITE_P(Formats, ReportedNumbers, ::testing::Range(0, 5));

}  // namespace
