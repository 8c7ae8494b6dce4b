#include <array>
#include <string_view>

#include "case-sources.h"
#include "fasta-layout.h"

namespace differential {

namespace {

// The longest sequences differ with the price of the settings.
struct exhaustive_settings {
  const char* alphabet;
  std::size_t longest;
  const char* options;  // words separated by single blanks
};

// Low thresholds, so that nearly every sequence has repeats to report; small penalties, so that edits pay.
constexpr std::array settings_table{
    exhaustive_settings{"AC", 14, "-M exact -s 2 -D --outputFormat 3"},
    exhaustive_settings{"AC", 14, "-M exact -s 3 --maskX --outputFormat 1"},
    exhaustive_settings{"AC", 14, "-M exact -s 2 -D --minPerfection nan --outputFormat 1 --reportUnit 0"},
    exhaustive_settings{"AC", 14, "-M exact -s 2 -D --maxPerfection 90 --maskX --outputFormat 1"},
    exhaustive_settings{"AC", 14, "-M extendExact -s 2 -m -2 -g -2 -D --outputFormat 1 --reportUnit 0"},
    exhaustive_settings{"AC", 14, "-M extendExact -s 3 -m -2 -g -2 --maxPerfection 90 --outputFormat 1 --reportUnit 0"},
    exhaustive_settings{"AC", 14, "-M extendExact -s 3 -m -3 -g -3 -D --maxPerfection 90 --outputFormat 1"},
    exhaustive_settings{"AC", 14, "-M extendExact -s 4 -m -3 -g -2 -r 2 --maskX --outputFormat 1"},
    exhaustive_settings{"AC", 14, "-M extendExact -s 4 -m -2 -g -3 -R 3 --preferShorterRepeats --outputFormat 1"},
    exhaustive_settings{"AC", 14, "-s 2 -m -2 -g -2 -D -U 5 --outputFormat 1 --reportUnit 0"},
    exhaustive_settings{"AC", 14, "-s 3 -m -2 -g -3 -r 3 --preferShorterRepeats --maskX --outputFormat 1"},
    exhaustive_settings{"AC", 14, "-s 3 -m -3 -g -2 -r 1 -R 2 -f 2 --outputFormat 1"},
    exhaustive_settings{"AC", 14, "-s 3 -m -2 -g -2 -r 2 -R 0 -D --outputFormat 1"},
    exhaustive_settings{"AC", 14, "-s 6 -m -2 -g -2 -r 300 -u 2 -U 4 --outputFormat 1"},
    exhaustive_settings{"AC", 15, "--minScore_b 0.5 -s 4 -l 7 --outputFormat 4"},
    exhaustive_settings{"AC", 15, "-m -3 -g -3 --outputFormat 3"},
    exhaustive_settings{"ACN", 9, "-M exact -s 2 -D --outputFormat 1 --NPerfectionMode 1"},
    exhaustive_settings{"ACN", 9, "-M exact -s 2 -N 1 --maxPerfection 80 --outputFormat 1"},
    exhaustive_settings{"ACN", 9, "-M exact -s 2 -N 1 -D --maxPerfection 80 --maskX --outputFormat 1"},
    exhaustive_settings{"ACN", 9, "-M extendExact -s 3 -m -2 -g -2 -N 1 --maskX --outputFormat 1"},
    exhaustive_settings{"ACN", 9, "-M extendExact -s 3 -m -2 -g -2 -N 2 --maxPerfection 80 --outputFormat 1"},
    exhaustive_settings{"ACN", 9, "-M extendExact -s 3 -m -2 -g -2 --NsAsMissense --outputFormat 1"},
    exhaustive_settings{"ACN", 9, "-s 2 -m -2 -g -2 -N 1 -D --maskX --outputFormat 1"},
    exhaustive_settings{"ACN", 9, "-s 2 -m -2 -g -2 -N 2 --preferShorterRepeats --NPerfectionMode 2 --outputFormat 1"},
    exhaustive_settings{"ACN", 9, "-s 2 -m -2 -g -3 -N 0 -r 2 --outputFormat 1"},
    exhaustive_settings{"ACN", 9, "-s 2 -m -2 -g -2 --NsAsMissense -R 2 -D --maskX --outputFormat 1"},
};

constexpr std::size_t records_of_a_file = 4096;

std::vector<option_words> split_options(std::string_view text) {
  std::vector<option_words> options;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string word(text.substr(0, end));
    const bool is_value = !options.empty() && (word[0] != '-' || (word.size() > 1 && word[1] >= '0' && word[1] <= '9'));
    if (is_value) {
      options.back().push_back(word);
    } else {
      options.push_back({word});
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return options;
}

// Sequences are counted by length, and within a length as numbers with the alphabet's symbols as digits.
std::uint64_t number_of_sequences(const exhaustive_settings& settings) {
  const std::uint64_t base = std::string_view(settings.alphabet).size();
  std::uint64_t count = 0;
  std::uint64_t of_length = 1;
  for (std::size_t length = 0; length <= settings.longest; ++length, of_length *= base) count += of_length;
  return count;
}

std::string sequence_with_number(std::string_view alphabet, std::uint64_t number) {
  std::size_t length = 0;
  std::uint64_t of_length = 1;
  for (; number >= of_length; ++length, of_length *= alphabet.size()) number -= of_length;
  std::string symbols;
  for (std::size_t i = 0; i < length; ++i, number /= alphabet.size()) symbols += alphabet[number % alphabet.size()];
  return symbols;
}

test_case exhaustive_case(const exhaustive_settings& settings, std::uint64_t first, std::uint64_t end) {
  std::vector<fasta_record> records;
  for (std::uint64_t number = first; number < end; ++number) {
    records.push_back({std::to_string(number), sequence_with_number(settings.alphabet, number)});
  }
  test_case made;
  made.options = split_options(settings.options);
  made.fasta = plain_fasta(records);
  return made;
}

std::optional<test_case> case_with_index(std::uint64_t index) {
  std::uint64_t files_before = 0;
  for (const exhaustive_settings& settings : settings_table) {
    const std::uint64_t count = number_of_sequences(settings);
    const std::uint64_t files = (count + records_of_a_file - 1) / records_of_a_file;
    if (index < files_before + files) {
      const std::uint64_t first = (index - files_before) * records_of_a_file;
      test_case made = exhaustive_case(settings, first, std::min(first + records_of_a_file, count));
      made.label = "--first " + std::to_string(index) + " --cases 1 exhaustive";
      return made;
    }
    files_before += files;
  }
  return std::nullopt;
}

}  // namespace

case_source exhaustive_cases() { return case_with_index; }

}  // namespace differential
