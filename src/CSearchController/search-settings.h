#pragma once

#include <limits>
#include <vector>

#include "scoring.h"

// All that the search of a record depends on beside the record. A value: two searches may run at once with two of them.
struct search_settings {
  scoring rules{};
  unsigned min_unit_length = 1;
  unsigned max_unit_length = 0;
  // Of a reported repeat, by unit length, 0 .. max_unit_length.
  std::vector<int> min_scores;
  std::vector<int> min_lengths;
  // Percent, inclusive; a perfection counts N's as N_and_perfection_mode says.
  float min_perfection = 0;
  float max_perfection = 0;
  int N_and_perfection_mode = 0;
  bool removes_mostly_hidden = true;

  // Whether a repeat of this perfection closes its symbols to units found later, and whether it is reported. They
  // differ for a perfection that is no number.
  bool is_in_range(float perfection) const { return min_perfection <= perfection && perfection <= max_perfection; }
  bool is_reported(float perfection) const { return !(min_perfection > perfection) && !(perfection > max_perfection); }
};

// The positions [begin, end) of a record, in symbols from its first; all of it if nothing else is said.
struct search_stretch {
  unsigned begin = 0;
  unsigned end = std::numeric_limits<unsigned>::max();
};

// The scoring that the parameters give.
scoring current_scoring();

// The settings that the parameters give, with the thresholds of CSearchController, which must have been made.
search_settings current_search_settings();

// The minimum score of the seeds of extend-exact mode. They may have any length.
inline int min_score_of_seeds(unsigned L) { return L < 4 ? 4 : static_cast<int>(L); }
