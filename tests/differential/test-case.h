// One case: a FASTA file and the options that both programs are run with.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace differential {

// The words of one option: its name and, unless it is a switch, its value.
using option_words = std::vector<std::string>;

struct test_case {
  std::string label;  // says how to make the case again
  std::vector<option_words> options;
  std::string fasta;               // the input file, byte for byte
  bool names_results_file = true;  // false: the results go to standard output
};

inline constexpr const char* input_name = "in.fa";
inline constexpr const char* results_name = "results";

// The words behind the program's name, in their order.
inline std::vector<std::string> command_words(const test_case& tested) {
  std::vector<std::string> words;
  for (const option_words& option : tested.options) words.insert(words.end(), option.begin(), option.end());
  words.emplace_back(input_name);
  if (tested.names_results_file) words.emplace_back(results_name);
  return words;
}

// How to make a case of a seeded series again.
inline std::string label_of(const char* mode, std::uint64_t seed, std::uint64_t index) {
  std::string label("--seed ");
  label.append(std::to_string(seed)).append(" --first ").append(std::to_string(index));
  return label.append(" --cases 1 ").append(mode);
}

}  // namespace differential
