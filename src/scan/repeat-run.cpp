#include "repeat-run.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <tuple>
#include <utility>

namespace {

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

// A repeat and the cuts in question that it may make wrong.
struct nearby_repeat {
  const char* unit_begin;
  int unit_length;
  cut_range excluded;

  bool operator<(const nearby_repeat& other) const {
    return std::tie(unit_begin, unit_length) < std::tie(other.unit_begin, other.unit_length);
  }
};

// The repeats of a run that may make a cut in [from, to] wrong, in the order of their starts.
std::vector<nearby_repeat> repeats_near(const CRepeatRun& run, const char* from, const char* to,
                                        unsigned longest_unit) {
  std::vector<nearby_repeat> near;
  for (const Csat* sat : run.repeats) {
    const cut_range range = excluded_by(*sat, longest_unit);
    if (range.last >= from && range.first <= to) near.push_back({sat->unit_begin, sat->unit_length(), range});
  }
  std::ranges::sort(near, std::less{});
  return near;
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
  std::vector<nearby_repeat> unshared;
  std::ranges::set_symmetric_difference(repeats_near(left, from, to, longest_unit),
                                        repeats_near(right, from, to, longest_unit), std::back_inserter(unshared),
                                        std::less{});
  std::ranges::sort(unshared, std::less{}, [](const nearby_repeat& one) { return one.excluded.first; });
  const char* cut = from;
  for (const nearby_repeat& one : unshared) {
    if (one.excluded.first > cut) break;
    cut = std::max(cut, one.excluded.last + 1);
  }
  return cut <= to ? cut : nullptr;
}
