#include "stretches.h"

#include <algorithm>

namespace {

// A border costs the search of some 3,000 symbols with short units, and 50,000 with units of 500.
constexpr unsigned shortest_stretch = 1U << 14;
constexpr unsigned more_for_a_unit_symbol = 400;
constexpr unsigned longest_stretch = 1U << 21;  // for the memory of the workspaces
constexpr unsigned shares_a_thread = 2;         // a thread begins with this part of its share

}  // namespace

std::vector<search_stretch> decreasing_stretches(unsigned length, std::int64_t behind, unsigned threads,
                                                 unsigned longest_unit) {
  if (threads == 1) return {{0, length}};
  const std::int64_t shortest = shortest_stretch + std::int64_t{more_for_a_unit_symbol} * longest_unit;
  std::vector<search_stretch> all;
  unsigned begin = 0;
  do {
    const std::int64_t rest = length - begin;
    const std::int64_t share = (rest + behind) / (std::int64_t{shares_a_thread} * threads);
    const std::int64_t next = std::max(shortest, std::min<std::int64_t>(share, longest_stretch));
    const unsigned end = rest < next + next / 2 ? length : begin + static_cast<unsigned>(next);
    all.push_back({begin, end});
    begin = end;
  } while (begin != length);
  return all;
}

std::vector<search_stretch> equal_stretches(unsigned length, unsigned about) {
  const unsigned count = std::max(1U, length / about);
  std::vector<search_stretch> all(count);
  for (unsigned i = 0; i < count; ++i) {
    all[i].begin = static_cast<unsigned>(std::uint64_t{length} * i / count);
    all[i].end = static_cast<unsigned>(std::uint64_t{length} * (i + 1) / count);
  }
  return all;
}
