#include "repeat-run.h"

#include <algorithm>
#include <utility>

namespace {

using start_of_repeat = std::pair<const char*, int>;

start_of_repeat start_of(const Csat& sat) { return {sat.unit_begin, sat.unit_length()}; }

// The cuts that a repeat of one run alone may make wrong, both ends included.
struct cut_range {
  const char* first;
  const char* last;
};

cut_range excluded_by(const Csat& sat, unsigned longest_unit) {
  const char* first = sat.pos_left;
  const char* last = sat.pos_right - 1;
  for (const auto& entry : sat.missense_entries()) {
    first = std::min(first, entry.position);
    last = std::max(last, entry.position);
  }
  return {first + 1 - static_cast<std::ptrdiff_t>(longest_unit), last + 1};
}

// What one run has and the other has not, as far as it excludes cuts in [from, to].
void exclude(const CRepeatRun& one, const std::vector<start_of_repeat>& other, const char* from, const char* to,
             unsigned longest_unit, std::vector<cut_range>& excluded) {
  for (const Csat* sat : one.repeats) {
    const cut_range range = excluded_by(*sat, longest_unit);
    if (range.last < from || range.first > to) continue;
    if (!std::binary_search(other.begin(), other.end(), start_of(*sat))) excluded.push_back(range);
  }
}

std::vector<start_of_repeat> starts_of(const CRepeatRun& run, const char* from, const char* to, unsigned longest_unit) {
  std::vector<start_of_repeat> starts;
  for (const Csat* sat : run.repeats) {
    const cut_range range = excluded_by(*sat, longest_unit);
    if (range.last >= from && range.first <= to) starts.push_back(start_of(*sat));
  }
  std::sort(starts.begin(), starts.end());
  return starts;
}

}  // namespace

bool is_found_before(const Csat* a, const Csat* b) {
  if (a->pos_left != b->pos_left || a->pos_right != b->pos_right) return lessThan_sat(a, b);
  if (a->unit_length() != b->unit_length()) return a->unit_length() < b->unit_length();
  return a->unit_begin < b->unit_begin;
}

CRepeatRun::CRepeatRun(search_stretch its_starts, CsatContainer& found)
    : starts(its_starts), repeats(found.records.begin(), found.records.end()) {
  found.records.clear();
}

repeat_list CRepeatRun::take(const char* from, const char* to) {
  repeat_list taken;
  for (Csat*& sat : repeats) {
    if (sat->unit_begin < from || sat->unit_begin >= to) continue;
    taken.push_back(std::exchange(sat, nullptr));
  }
  return taken;
}

const char* find_cut(const CRepeatRun& left, const CRepeatRun& right, const char* from, const char* to,
                     unsigned longest_unit) {
  std::vector<cut_range> excluded;
  exclude(left, starts_of(right, from, to, longest_unit), from, to, longest_unit, excluded);
  exclude(right, starts_of(left, from, to, longest_unit), from, to, longest_unit, excluded);
  std::sort(excluded.begin(), excluded.end(), [](const cut_range& a, const cut_range& b) { return a.first < b.first; });
  const char* cut = from;
  for (const cut_range& range : excluded) {
    if (range.first > cut) break;
    cut = std::max(cut, range.last + 1);
  }
  return cut <= to ? cut : nullptr;
}
