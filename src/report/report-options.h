#pragma once

#include <span>
#include <string>
#include <vector>

#include "option-row.h"

// The one table of quarvo-report's options: the parser is built from it, and so is all that documents the options.

struct report_option_values {
  std::string output;  // empty: standard output
  std::vector<std::string> results;
};
extern report_option_values report_options;

// All options in the order of the usage text. The plain words come last.
std::span<const option_row> report_option_table();

inline constexpr const char* report_description =
    "This program makes a web page of results of Quarvo (output formats 0, 1 and 3): one file that any browser opens, "
    "without a network.";
