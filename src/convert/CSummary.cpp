#include "CSummary.h"

#include <algorithm>
#include <tuple>

void CSummary::begin_sequence(const results_sequence& sequence) {
  sequences.push_back({sequence.name, sequence.length, {}});
}

void CSummary::add(const results_repeat& repeat) {
  const auto sequence = static_cast<std::int64_t>(sequences.size());
  for (repeat_tally* group :
       {&whole, &unit_lengths[repeat.unit_length], &units[repeat.normal_form], &sequences.back().counts}) {
    group->add(sequence, repeat);
  }
}

std::vector<std::pair<std::string, repeat_tally>> CSummary::by_unit() const {
  std::vector<std::pair<std::string, repeat_tally>> sorted(units.begin(), units.end());
  std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
    return std::forward_as_tuple(a.first.size(), a.first) < std::forward_as_tuple(b.first.size(), b.first);
  });
  return sorted;
}

std::optional<std::int64_t> CSummary::total_length() const {
  std::int64_t sum = 0;
  for (const sequence_row& row : sequences) {
    if (!row.length) return std::nullopt;
    sum += *row.length;
  }
  return sum;
}
