#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "repeat-tally.h"

// How many repeats there are and how many symbols they cover: in all, by unit length, by unit in its normal form, and
// by sequence.
//
// A symbol is covered once however many repeats of one group lie over it; repeats of different groups may cover the
// same symbol, so groups do not add up to the whole. Memory grows with the number of different units and of sequences.
class CSummary {
 public:
  struct sequence_row {
    std::string name;
    std::optional<int> length;
    repeat_tally counts;
  };

  void begin_sequence(const results_sequence& sequence);
  // A repeat of the sequence begun last. They must come by start.
  void add(const results_repeat& repeat);

  const repeat_tally& all() const { return whole; }
  const std::map<int, repeat_tally>& by_unit_length() const { return unit_lengths; }
  // By unit length, then alphabetically.
  std::vector<std::pair<std::string, repeat_tally>> by_unit() const;
  // In the order of the results.
  const std::vector<sequence_row>& by_sequence() const { return sequences; }
  // The sum of the lengths of all sequences begun, unless one is not known.
  std::optional<std::int64_t> total_length() const;

 private:
  repeat_tally whole;
  std::map<int, repeat_tally> unit_lengths;
  std::unordered_map<std::string, repeat_tally> units;
  std::vector<sequence_row> sequences;
};
