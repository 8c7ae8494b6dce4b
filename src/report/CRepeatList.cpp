#include "CRepeatList.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "json-text.h"
#include "printed-lines.h"

namespace {

std::optional<int> defect_of(double perfection) {
  if (std::isnan(perfection)) return std::nullopt;
  return static_cast<int>(std::lround((100 - perfection) * 1000));
}

std::size_t size_of(const std::vector<std::string>& lines) {
  return std::accumulate(lines.begin(), lines.end(), std::size_t{0},
                         [](std::size_t sum, const std::string& line) { return sum + line.size() + 3; });
}

// Adds up what rows take in the page, in any order of rows. Never less than they will take, and little more.
class CRowCosts {
 public:
  CRowCosts(const std::vector<CRepeatList::sequence_cost>& its_sequences, std::size_t distinct_units)
      : sequences(its_sequences), rows_of(its_sequences.size()), index_size(json_size(as_number(distinct_units))) {}

  std::size_t add(const CRepeatList::row& row) {
    std::size_t cost = index_size + (row.defect.has_value() ? json_size(*row.defect) : 5);
    for (const int number : {row.span, row.excess, row.score, row.mismatches, row.insertions, row.deletions, row.Ns}) {
      cost += json_size(number);
    }
    if (units.insert(row.unit).second) cost += json_size(row.unit);
    std::size_t& rows = rows_of[row.sequence];
    if (rows == 0) cost += sequences[row.sequence].name;
    const std::size_t before = size_of_steps(row.sequence, rows);
    return cost + size_of_steps(row.sequence, ++rows) - before;
  }

 private:
  const std::vector<CRepeatList::sequence_cost>& sequences;
  std::vector<std::size_t> rows_of;  // of each sequence, so far
  std::size_t index_size;
  std::unordered_set<std::string_view> units;

  static std::int64_t as_number(std::size_t count) { return static_cast<std::int64_t>(count); }

  // Steps of one sequence add up to at most its extent, and have the most digits together when they are equal.
  std::size_t size_of_steps(std::size_t sequence, std::size_t rows) const {
    if (rows == 0) return 0;
    const auto count = static_cast<double>(rows);
    const double mean = std::max(1.0, static_cast<double>(sequences[sequence].extent) / count);
    return static_cast<std::size_t>(std::ceil(count * (std::log10(mean) + 2)));
  }
};

}  // namespace

void CRepeatList::add(std::size_t sequence, const results_repeat& repeat) {
  const std::int64_t order = count++;
  row listed{repeat.score,
             order,
             sizeof(row) / 2 + repeat.unit.size(),
             sequence,
             repeat.start,
             repeat.span,
             repeat.length - repeat.span,
             defect_of(repeat.perfection),
             repeat.mismatches.value_or(0),
             repeat.insertions.value_or(0),
             repeat.deletions.value_or(0),
             repeat.Ns.value_or(0),
             repeat.unit};
  repeats.add(std::move(listed));
  add_lines(order, repeat);
}

void CRepeatList::add_lines(std::int64_t order, const results_repeat& repeat) {
  std::vector<std::string> lines = printed_lines(repeat);
  if (lines.empty()) return;
  has_texts = true;
  if (lines.front().size() > longest_alignment) {
    orders_too_long.insert(order);
    return;
  }
  const std::size_t bytes = size_of(lines) + 3 + json_size(order);
  texts.add({repeat.score, order, bytes, std::move(lines)});
}

void CRepeatList::finish(std::size_t room, std::size_t room_of_alignments,
                         const std::vector<sequence_cost>& sequences) {
  const std::size_t for_rows = has_texts ? room - std::min(room, room_of_alignments) : room;
  const std::size_t used = list_rows(for_rows, sequences);

  std::unordered_set<std::int64_t> listed;
  for (const row& kept : rows()) listed.insert(kept.order);
  texts.finish(room - used, [&listed](const alignment& text) { return listed.contains(text.order) ? text.bytes : 0; });
  count_missing();
}

// Returns the bytes that the rows take.
std::size_t CRepeatList::list_rows(std::size_t room, const std::vector<sequence_cost>& sequences) {
  std::unordered_set<std::string_view> units;
  for (const row& candidate : rows()) units.insert(candidate.unit);
  CRowCosts costs(sequences, units.size());
  std::size_t used = 0;
  repeats.finish(room, [&](const row& candidate) {
    const std::size_t cost = costs.add(candidate);
    if (used + cost <= room) used += cost;
    return cost;
  });
  return used;
}

void CRepeatList::count_missing() {
  if (!has_texts) return;
  auto text = alignments().begin();
  for (const row& kept : rows()) {
    while (text != alignments().end() && text->order < kept.order) ++text;
    if (text != alignments().end() && text->order == kept.order) continue;
    if (orders_too_long.contains(kept.order)) {
      ++too_long;
      continue;
    }
    best_missing = missing_alignments == 0 ? kept.score : std::max(best_missing, kept.score);
    ++missing_alignments;
  }
}
