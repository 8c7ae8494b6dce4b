#pragma once

#include <span>
#include <string>
#include <vector>

#include "option-row.h"

// The one table of quarvo-scan's options: its own, and those of quarvo that settle what is searched and reported.

enum scan_output : int { by_extension, to_results };
inline constexpr int first_conversion = 2;  // the formats of quarvo-convert in their order
enum masking : int { no_mask, soft_mask, N_mask, X_mask };

struct scan_option_values {
  int to = by_extension;
  std::string output;  // empty: standard output
  bool force = false;
  bool index = false;
  int mask = no_mask;
  std::string masked;
  std::string sequences;  // names with commas between them
  std::string sequences_from;
  unsigned threads = 0;  // 0: all cores that this process may use
  bool progress = false;
  bool quiet = false;
  std::vector<std::string> inputs;
};
extern scan_option_values scan_options;

// All options in the order of the usage text. The plain words come last. The parameters must hold their defaults.
std::span<const option_row> scan_option_table();

// Reads the command line into scan_options and the parameters. Returns 0 or the exit status, after a message; help and
// version end the process.
int read_scan_options(int argc, char** argv);

inline constexpr const char* scan_description =
    "This program searches DNA sequences for tandem repeats as quarvo does, by many threads, and writes them in the "
    "format that is asked for.";
