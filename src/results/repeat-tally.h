#pragma once

#include "CCoverage.h"
#include "results-records.h"

// How many repeats a group has and how many symbols they cover.
struct repeat_tally {
  std::int64_t repeats = 0;
  CCoverage coverage;

  std::int64_t covered() const { return coverage.symbols(); }

  // Takes and returns what CCoverage::add does.
  int add(std::int64_t sequence, const results_repeat& repeat) {
    ++repeats;
    return coverage.add(sequence, repeat.start, repeat.end);
  }
};
