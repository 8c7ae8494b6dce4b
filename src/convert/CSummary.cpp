#include "CSummary.h"

#include <algorithm>
#include <tuple>

void CSummary::begin_sequence(const results_sequence& sequence, std::optional<int> length) {
  sequences.push_back({sequence.name, length, {}});
}

void CSummary::add(const results_repeat& repeat) {
  count(whole, repeat);
  count(unit_lengths[repeat.unit_length], repeat);
  count(units[repeat.normal_form], repeat);
  count(sequences.back().counts, repeat);
}

// Starts only grow within a sequence, so what lies behind covered_to is what the repeat adds.
void CSummary::count(tally& group, const results_repeat& repeat) const {
  const auto sequence = static_cast<std::int64_t>(sequences.size());
  if (group.sequence != sequence) group.covered_to = 0;
  group.sequence = sequence;
  ++group.repeats;
  if (repeat.end <= group.covered_to) return;
  group.covered += repeat.end - std::max(group.covered_to, repeat.start - 1);
  group.covered_to = repeat.end;
}

std::vector<std::pair<std::string, CSummary::tally>> CSummary::by_unit() const {
  std::vector<std::pair<std::string, tally>> sorted(units.begin(), units.end());
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
