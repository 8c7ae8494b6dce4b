// Random options.
#pragma once

#include <string>
#include <vector>

#include "random-numbers.h"
#include "test-case.h"

namespace differential {

// The settings that decide which sequences are worth trying; the other options are only words.
struct search_settings {
  std::string mode = "imperfect";
  int recursion = 5;
  int score_reduction = 2147483647;
  int mismatch = -5;
  int indel = -5;
  int Ns_in_a_row = 2;
  int min_unit = 1;
  int max_unit = 10;
  std::vector<option_words> options;  // everything given on the command line, in any order
};

// Settings that reach every corner of the search and the report.
search_settings random_settings(CRandom& random);

// Settings with a cheap search, for cases whose subject is the layout of the input file.
search_settings cheap_settings(CRandom& random);

}  // namespace differential
