// The numbers of the repeats in a results file, in any of its formats.
#pragma once

#include <string>
#include <vector>

struct reported_numbers {
  std::string line;  // as it stands in the file
  long long start = 0;
  long long end = 0;
  std::vector<long long> counts;  // all that counts something: span, length, edits, N's, positions of edits
  std::vector<double> ratios;     // perfection, number of copies
};

// Of all lines that report a repeat, in the given output format.
std::vector<reported_numbers> repeats_in(const std::string& results, int output_format);
