// The command line: from the argument vector to checked parameters.

#include <tclap/ArgException.h>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "global-types-and-parameters-options.h"
#include "global-types-and-parameters.h"
#include "option-parser.h"

namespace {

constexpr int rejected = -1;
constexpr int unknown_mode = -2;

template <typename... Texts>
int reject(int status, Texts... texts) {
  (std::fputs(texts, stderr), ...);
  return status;
}

bool has_no_input_file() { return parsed_options.iofiles.empty(); }

// Three or more words name no file at all; the run then ends at the empty input name.
void store_file_names() {
  global_input_filename.clear();
  global_output_filename.clear();
  const std::vector<std::string>& names = parsed_options.iofiles;
  if (names.size() > 2) return;
  global_input_filename = names[0];
  if (names.size() == 2) global_output_filename = names[1];
}

// Checks the options of these names one after the other.
parameter_complaint check_options(std::initializer_list<std::string_view> names, int status) {
  for (const std::string_view name : names) {
    const auto row = std::ranges::find(option_table(), name, &option_row::long_name);
    std::string text = complaint_about(*row);
    if (!text.empty()) return {status, std::move(text)};
  }
  return {};
}

// The threshold of a repeat of unit length 1, in single precision.
float threshold_of_unit_length_1(int constant, int offset, float slope) {
  const float linear = static_cast<float>(offset) + slope;
  return static_cast<float>(constant) >= linear ? static_cast<float>(constant) : linear;
}

parameter_complaint check_thresholds() {
  const float s = threshold_of_unit_length_1(global_min_score, global_min_score_a, global_min_score_bx);
  const float l = threshold_of_unit_length_1(global_min_length, global_min_length_a, global_min_length_bx);
  const bool are_too_low = s < 2.0F && l < 2.0F;
  if (!are_too_low) return {};
  return {rejected, "Sorry, either the minimum score or the minimum length must be larger.\n"};
}

parameter_complaint check_unit_lengths() {
  if (global_max_unit_length >= global_min_unit_length) return {};
  return {rejected,
          "I think you have made a mistake here: The maximum unit length must be greater\n"
          "or equal to the minimum unit length.\n"};
}

// Reads the argument vector into the parameters and parsed_options. Returns a status.
int parse_command_line(int argc, char** argv) {
  try {
    parse_options(option_table(), "This program searches for tandemly repeated patterns in DNA sequences.", argc, argv);
  } catch (const TCLAP::ArgException& e) {
    return reject(rejected, "Error: ", e.error().c_str(), " for arg ", e.argId().c_str(), "\n");
  }
  return 0;
}

}  // namespace

int read_and_init_parameters(int argc, char** argv) {
  init_param();
  parsed_options = {};
  if (const int status = parse_command_line(argc, argv); status != 0) return status;
  if (has_no_input_file()) {
    return reject(rejected, "Error: No input file has been specified. Type ", argv[0],
                  " --help for more information.\n");
  }
  store_file_names();
  const parameter_complaint complaint = check_parameters();
  return reject(complaint.status, complaint.text.c_str());
}

parameter_complaint check_parameters() {
  global_prefer_longer_repeat = parsed_options.prefer_shorter_repeats ? 0 : 1;
  // In the order in which a run complains.
  parameter_complaint found =
      check_options({"outputFormat", "printRepeatSeqMode", "NPerfectionMode", "reportUnit"}, unknown_mode);
  if (found.status == 0) found = check_thresholds();
  if (found.status == 0)
    found = check_options({"mismatchScore", "indelScore", "succN", "flanking", "recursion"}, rejected);
  if (found.status == 0) found = check_unit_lengths();
  return found.status == 0 ? check_options({"maxUnitLen"}, rejected) : found;
}

std::vector<std::string> files_named(int argc, char** argv) {
  init_param();
  parsed_options = {};
  return parse_silently(option_table(), argc, argv) ? parsed_options.iofiles : std::vector<std::string>();
}
