#include "run-ends.h"

#include <algorithm>
#include <bit>

namespace {

constexpr std::uint64_t all = ~std::uint64_t{0};

constexpr std::uint64_t bits_from(int offset) {
  if (offset <= 0) return all;
  return offset < CRunEnds::symbols ? all << offset : 0;
}

// What edits cost at most, beside the symbols that they consume.
constexpr int most_lost = (CRunEnds::most_penalty + 1) * CRunEnds::most_edits;

// bits_from() for each offset from which on a score can be enough for an edit.
constexpr int least_offset = -most_lost;
constexpr int most_offset = CRunEnds::symbols + most_lost;
constexpr auto places_from = [] {
  std::array<std::uint64_t, most_offset - least_offset + 1> table{};
  int offset = least_offset;
  for (std::uint64_t& places : table) places = bits_from(offset++);
  return table;
}();

// The places with a score of at least `least`, by what was lost on the way, where the way began with `score`.
const std::uint64_t* places_with(std::int64_t least, int score) {
  const std::int64_t offset = std::clamp<std::int64_t>(least - score, least_offset, CRunEnds::symbols);
  return places_from.data() + (offset - least_offset);
}

int highest_bit(std::uint64_t bits) { return CRunEnds::symbols - 1 - std::countl_zero(bits); }

// The places from which a run leads to one of the ends, which are mismatches.
std::uint64_t starts_of_runs(std::uint64_t ends, std::uint64_t different) {
  std::uint64_t starts = 0;
  for (; ends != 0; ends &= ends - 1) {
    const std::uint64_t end = ends & (~ends + 1);
    const std::uint64_t before = different & (end - 1);
    starts |= (end | (end - 1)) & (before == 0 ? all : all << (CRunEnds::symbols - std::countl_zero(before)));
  }
  return starts;
}

}  // namespace

void CRunEnds::set(const scoring& rules, int unit_length) {
  is_applied = rules.is_unlimited() && rules.recursion_depth >= 1 && rules.recursion_depth <= most_edits &&
               std::min(rules.mismatch_score, rules.indel_score) >= -most_penalty &&
               std::max(rules.mismatch_score, rules.indel_score) < 0;
  if (!is_applied) return;
  depth = rules.recursion_depth;
  if (mismatch_score != rules.mismatch_score || indel_score != rules.indel_score) {
    mismatch_score = rules.mismatch_score;
    indel_score = rules.indel_score;
    set_losses();
  }
  const std::int64_t lowest = rules.least_after_edit(unit_length);
  least_for_mismatch = lowest - mismatch_score;
  least_for_indel = lowest - indel_score;
}

void CRunEnds::set_losses() {
  for (int edits = 0; edits <= most_edits; ++edits) {
    for (int deletions = 0; deletions <= edits; ++deletions) {
      for (int insertions = 0; deletions + insertions <= edits; ++insertions) {
        const int mismatches = edits - deletions - insertions;
        sets.lost[static_cast<std::size_t>(edits)][index(deletions, insertions)] =
            mismatches * (1 - mismatch_score) + insertions * (1 - indel_score) - deletions * indel_score;
      }
    }
  }
}

int CRunEnds::cheaper_score() const { return std::max(mismatch_score, indel_score); }

bool CRunEnds::choose(const CSymbolsAhead& ahead, int score, int needed) {
  const run_end_question asked{ahead.different(),
                               places_with(least_for_mismatch, score),
                               places_with(least_for_indel, score),
                               ahead.ends_there() ? ~bits_from(ahead.known()) : all,
                               cheaper_score(),
                               depth,
                               has_one_penalty()};
  sets.for_mismatch[0][index(0, 0)] = asked.mismatch_places[0] & 1;
  sets.for_indel[0][index(0, 0)] = asked.indel_places[0] & 1;
  found = {edit::none, score, false};
  last_layer = 0;
  if (((asked.mismatch_places[0] | asked.indel_places[0]) & 1) == 0) return true;
  const run_end_outcome made = make_run_end_layers(sets, asked);
  if (!made.is_known) return false;
  last_layer = made.layers;
  highest_value = cheaper_score() + highest_bit(made.values);
  const bool is_of_interest = score + highest_value >= needed || made.is_cut;
  found = {is_of_interest ? first_edit(asked, made.highest_layer) : edit::mismatch, score + highest_value, made.is_cut};
  return true;
}

// Every path can go on by a mismatch, so the farthest one is of the last layer.
int CRunEnds::farthest() const {
  std::uint64_t places = 1;
  for (int deletions = 0; deletions <= last_layer; ++deletions) {
    const auto& last = sets.ends[static_cast<std::size_t>(last_layer)];
    for (int insertions = 0; deletions + insertions <= last_layer; ++insertions) {
      places |= last[index(deletions, insertions)];
    }
  }
  return highest_bit(places);
}

// Of the run ends those with the highest score, and those on the way there.
std::uint64_t CRunEnds::highest_ends(int edits, std::size_t cell) const {
  const auto at = static_cast<std::size_t>(edits);
  const std::int64_t offset = highest_value + sets.lost[at][cell];
  return wanted[at][cell] | (offset < symbols ? sets.ends[at][cell] & std::uint64_t{1} << offset : 0);
}

// The counts of the layer with which a path has the highest score.
std::uint64_t CRunEnds::cells_with_highest(int edits) const {
  const bool has_highest = sets.values[static_cast<std::size_t>(edits)] >> (highest_value - cheaper_score()) != 0;
  return has_highest ? counts_with_score(sets, edits, highest_value, has_one_penalty()) : 0;
}

// Notes the places from which one edit leads to those wanted of the cell. Returns the cells that they are of.
std::uint64_t CRunEnds::follow_back(const run_end_question& asked, int edits, std::size_t cell) {
  const auto at = static_cast<std::size_t>(edits);
  const auto& before_mismatch = sets.for_mismatch[at - 1];
  const auto& before_indel = sets.admissible_for_indel(has_one_penalty())[at - 1];
  const auto deletions = static_cast<int>((cell - guard) / row);
  const auto insertions = static_cast<int>((cell - guard) % row);
  const std::uint64_t starts = starts_of_runs(highest_ends(edits, cell), asked.different[insertions - deletions]);
  wanted[at][cell] = 0;
  std::uint64_t cells = 0;
  const auto want = [&](std::size_t before, std::uint64_t places) {
    if (places == 0) return;
    wanted[at - 1][before] |= places;
    cells |= bit_of(before);
  };
  want(cell, before_mismatch[cell] & starts >> 1);
  want(cell - 1, before_indel[cell - 1] & starts >> 1);
  want(cell - row, before_indel[cell - row] & starts);
  return cells;
}

// Follows the paths with the highest score back to the first edit.
edit CRunEnds::first_edit(const run_end_question& asked, int edits) {
  std::uint64_t wanted_cells = 0;
  for (; edits > 1; --edits) {
    std::uint64_t before = 0;
    for (std::uint64_t left = wanted_cells | cells_with_highest(edits); left != 0; left &= left - 1) {
      before |= follow_back(asked, edits, guard + static_cast<std::size_t>(std::countr_zero(left)));
    }
    wanted_cells = before;
  }
  const bool by_mismatch = highest_ends(1, index(0, 0)) != 0;
  const bool by_insertion = highest_ends(1, index(0, 1)) != 0;
  for (const std::size_t cell : {index(0, 0), index(0, 1), index(1, 0)}) wanted[1][cell] = 0;
  return by_mismatch ? edit::mismatch : by_insertion ? edit::insertion : edit::deletion;
}
