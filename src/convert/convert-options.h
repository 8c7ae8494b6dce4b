#pragma once

#include <span>
#include <string>
#include <vector>

#include "conversion-settings.h"

// The one table of quarvo-convert's options: the parser is built from it, and so is all that documents the options.

struct convert_option_values {
  conversion_settings conversion;
  std::string output;   // empty: standard output
  std::string lengths;  // empty: none
  std::vector<std::string> results;
};
extern convert_option_values convert_options;

// All options in the order of the usage text. The plain words come last.
std::span<const option_row> convert_option_table();

inline constexpr const char* convert_description =
    "This program turns results of Quarvo (output formats 0, 1 and 3) into formats that other programs read.";
