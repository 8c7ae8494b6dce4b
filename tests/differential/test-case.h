// One case: a FASTA file and the options that both programs are run with.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace differential {

// The words of one option: its name and, unless it is a switch, its value.
using option_words = std::vector<std::string>;

inline constexpr const char* input_name = "in.fa";
inline constexpr const char* results_name = "results";

inline const std::vector<std::string> names_with_results_file{input_name, results_name};
inline const std::vector<std::string> names_with_standard_output{input_name};

struct test_case {
  std::string label;  // says how to make the case again
  std::vector<option_words> options;
  std::string fasta;  // the input file, byte for byte
  std::vector<std::string> file_names = names_with_results_file;
};

// The words after the program's name, in their order.
inline std::vector<std::string> command_words(const test_case& tested) {
  std::vector<std::string> words;
  for (const option_words& option : tested.options) words.insert(words.end(), option.begin(), option.end());
  words.insert(words.end(), tested.file_names.begin(), tested.file_names.end());
  return words;
}

// How to make a case of a seeded series again.
inline std::string label_of(const char* mode, std::uint64_t seed, std::uint64_t index) {
  std::string label("--seed ");
  label.append(std::to_string(seed)).append(" --first ").append(std::to_string(index));
  return label.append(" --cases 1 ").append(mode);
}

}  // namespace differential
