#pragma once

#include <span>
#include <string>
#include <vector>

#include "option-row.h"

// The one table of command-line options: the parser is built from it, and so is all that documents the options.

// Where the parser leaves what has no parameter of the same form.
struct parsed_option_values {
  bool prefer_shorter_repeats = false;
  std::vector<std::string> iofiles;
};
extern parsed_option_values parsed_options;

// All options in the order of the usage text. The plain words come last.
std::span<const option_row> option_table();
