#pragma once

#include <algorithm>
#include <cstdint>

// Counts the symbols that lie in at least one of the repeats given, sequence by sequence and by ascending start.
class CCoverage {
 public:
  // Start and end are 1-based and inclusive. Returns the first position that no repeat of this sequence covered before,
  // end + 1 when there is none.
  int add(std::int64_t sequence, int start, int end) {
    if (sequence != current_sequence) {
      current_sequence = sequence;
      last_end = 0;
    }
    const int first_new = std::max(start, last_end + 1);
    if (first_new > end) return end + 1;
    last_end = end;
    covered += end - first_new + 1;
    return first_new;
  }

  std::int64_t symbols() const { return covered; }

 private:
  std::int64_t current_sequence = -1;
  int last_end = 0;
  std::int64_t covered = 0;
};
