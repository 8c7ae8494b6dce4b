#ifndef QUARVO_CONVERT_OPTIONS_H
#define QUARVO_CONVERT_OPTIONS_H

#include <span>
#include <string>
#include <vector>

#include "option-row.h"

// The one table of quarvo-convert's options: the parser is built from it, and so is all that documents the options.

enum convert_format : int { to_bed, to_gff3, to_json, to_tsv, to_multiqc };

struct convert_option_values {
  int to = to_bed;      // a convert_format
  std::string output;   // empty: standard output
  std::string lengths;  // empty: none
  std::string sample;   // empty: from the name of the run's input file
  std::vector<std::string> results;
};
extern convert_option_values convert_options;

// All options in the order of the usage text. The plain words come last.
std::span<const option_row> convert_option_table();

inline constexpr const char* convert_description =
    "This program turns results of Quarvo (output formats 0, 1 and 3) into formats that other programs read.";

#endif
