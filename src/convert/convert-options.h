#ifndef QUARVO_CONVERT_OPTIONS_H
#define QUARVO_CONVERT_OPTIONS_H

#include <span>
#include <string>
#include <vector>

#include "option-row.h"

// The one table of quarvo-convert's options: the parser is built from it, and so is all that documents the options.

struct convert_option_values {
  std::string to;
  std::string output;   // empty: standard output
  std::string lengths;  // empty: none
  std::string sample;   // empty: from the name of the run's input file
  std::vector<std::string> results;
};
extern convert_option_values convert_options;

// All options in the order of the usage text. The plain words come last.
std::span<const convert_option_row> convert_option_table();

// The words that `to` takes, by the format that they stand for.
enum convert_format : int { to_bed, to_gff3, to_json, to_tsv, to_multiqc };
std::span<const char* const> convert_format_words();

// The format of a word among them.
convert_format convert_format_of(const std::string& word);

inline constexpr const char* convert_description =
    "This program turns results of Quarvo (output formats 0, 1 and 3) into formats that other programs read.";

// Reads the command line into convert_options. Returns 0, or the exit status behind a message on standard error. Help,
// version and syntax errors end the process inside the parser (status 0, 0 and 1).
int read_convert_options(int argc, char** argv);

#endif
