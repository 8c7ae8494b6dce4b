// The operations of a repeat record.

#include "Csat.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

#include "CsatContainer.h"
#include "global-types-and-parameters.h"
#include "out-of-memory.h"

// Made without allocating, since nothing could tell of a failure before main, and never destroyed.
alignas(Csat_garbagecollector) static std::array<std::byte, sizeof(Csat_garbagecollector)> sat_alloc_memory;
Csat_garbagecollector& sat_alloc = *new (sat_alloc_memory.data()) Csat_garbagecollector;

namespace {

void (*end_without_memory_for_edits)() = nullptr;

}  // namespace

void Csat::reset(const char* begin, const char* end) {
  pos_left = fwd_unit_cursor = unit_begin = begin;
  pos_right = unit_end = end;
  bwd_unit_cursor = end - 1;
  score = mismatches = insertions = deletions = number_of_Ns = 0;
  delete ext_ptr;
  ext_ptr = nullptr;
  recursion_depth = 0;
  missense_count = 0;
}

void Csat::when_edits_lack_memory(void (*end)()) { end_without_memory_for_edits = end; }

void Csat::add_missense(const char* position, char symbol) {
  if (missense_count == missense_capacity) {
    const unsigned capacity = missense == nullptr ? 4 : 2 * missense_capacity;
    void* const grown = std::realloc(missense, capacity * sizeof(missense_entry));
    if (grown == nullptr) {
      if (end_without_memory_for_edits != nullptr) end_without_memory_for_edits();
      raise_out_of_memory();
    }
    missense = static_cast<missense_entry*>(grown);
    missense_capacity = capacity;
  }
  missense[missense_count++] = {position, symbol};
}

void Csat::sort_missense() { std::sort(missense, missense + missense_count, lessThan_missense); }

void Csat::trim_Ns() {
  while (pos_right[-1] == 'N') {
    --pos_right;
    fwd_unit_cursor = unit_predecessor(fwd_unit_cursor);
    --number_of_Ns;
  }
  while (*pos_left == 'N') {
    ++pos_left;
    bwd_unit_cursor = unit_successor(bwd_unit_cursor);
    --number_of_Ns;
  }
}

float Csat::perfection() const { return perfection(global_N_and_perfection_mode); }

float Csat::perfection(int N_and_perfection_mode) const {
  const int edits = mismatches + insertions + deletions;
  const int aligned = length();
  const auto percent = [](int matches, int divisor) {
    return static_cast<float>(matches) / static_cast<float>(divisor) * 100.0F;
  };
  switch (N_and_perfection_mode) {
    case Ns_as_mismatch:
      return percent(aligned - edits - number_of_Ns, aligned);
    case Ns_as_neutral:
      return percent(aligned - edits - number_of_Ns, aligned - number_of_Ns);
    case Ns_as_match:
      return percent(aligned - edits, aligned);
    default:
      std::exit(2);
  }
}

bool Csat::is_reported_perfection(float perfection) {
  return !(global_min_perfection > perfection) && !(perfection > global_max_perfection);
}

// Keys are sorted side by side with the records: a list sorted by itself looks up both records of each comparison
// somewhere in memory. All positions are of one sequence, which has less than 2^32 symbols.
void CsatContainer::sort() {
  struct sort_entry {
    std::uint64_t key;  // start and end
    Csat* sat;
  };
  if (std::is_sorted(records.begin(), records.end(), lessThan_sat)) return;
  const char* const first = (*std::min_element(records.begin(), records.end(), lessThan_sat))->pos_left;
  std::vector<sort_entry> entries;
  entries.reserve(records.size());
  for (Csat* const sat : records) {
    const auto start = static_cast<std::uint64_t>(sat->pos_left - first);
    const auto end = static_cast<std::uint64_t>(sat->pos_right - first);
    entries.push_back({start << 32 | end, sat});
  }
  std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
  std::transform(entries.begin(), entries.end(), records.begin(), [](const auto& entry) { return entry.sat; });
}
