// Command lines from bytes: every option that the program has, with values that are mostly accepted and search little
// enough for the plain recursion of the reference.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "search-settings.h"

struct fuzz_case {
  std::vector<std::string> words;          // options and values, as on the command line; each option at most once
  differential::search_settings settings;  // what these words mean for the cost of a search
  std::string rest;                        // the bytes after those of the options
};

// A byte below the number of options chooses one; a byte for its value follows, but for a switch. The first other byte
// ends the options and belongs to the rest. The parser takes all of these command lines; the checks after it may not.
fuzz_case take_options(const std::uint8_t* data, std::size_t size);
