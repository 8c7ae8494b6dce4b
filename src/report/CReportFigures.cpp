#include "CReportFigures.h"

#include <algorithm>

#include "json-text.h"
#include "sequence-names.h"
#include "shortened-text.h"

namespace {

// Sixteen bytes each: what the tracks of a genome of any number of sequences may take.
constexpr std::size_t most_bins_held = std::size_t{1} << 21;
constexpr std::size_t fewest_bins = 8;

}  // namespace

void CReportFigures::add(const results_sequence& sequence) {
  ++sequence_count;
  if (sequence.length.has_value()) {
    symbol_count += *sequence.length;
  } else {
    lengths_are_known = false;
  }
  name_key = names.add(plain_name(sequence.name));
  waiting = sequence;
  is_waiting = true;
}

void CReportFigures::add(const results_repeat& repeat) {
  if (is_waiting) begin_sequence();
  const auto ordinal = static_cast<std::int64_t>(current_sequence());
  const int first_new = all.add(ordinal, repeat);
  by_unit_length[repeat.unit_length].add(ordinal, repeat);
  by_unit[repeat.normal_form].add(ordinal, repeat);
  length_distribution.add(repeat.unit_length, repeat.span);
  copy_distribution.add(repeat.unit_length, repeat.copy_number());
  perfection_distribution.add(repeat.unit_length, repeat.perfection);
  extend_track(repeat, first_new);
}

void CReportFigures::begin_sequence() {
  is_waiting = false;
  sequence_figures figures;
  figures.ordinal = waiting.ordinal;
  figures.name = shortened_text(waiting.name, waiting.ordinal);
  figures.name_key = name_key;
  figures.is_bed_name = is_bed_name(plain_name(waiting.name));
  figures.is_exact = figures.name == waiting.name && is_utf8(waiting.name);
  if (waiting.full_name.has_value() && waiting.full_name->size() > waiting.name.size()) {
    figures.title = shortened_text(std::string_view(*waiting.full_name).substr(waiting.name.size() + 1));
  }
  const bool is_whole = figures.name == waiting.name && !figures.title.ends_with("...");
  shortened += is_whole ? 0 : 1;
  figures.length = waiting.length;
  with_repeats.push_back(std::move(figures));
}

void CReportFigures::extend_track(const results_repeat& repeat, int first_new) {
  sequence_figures& here = with_repeats.back();
  ++here.repeats;
  here.covered += repeat.end - first_new + 1;
  const std::size_t before = here.track.bins().size();
  here.track.add(repeat.start, first_new, repeat.end, most_bins_of_a_track);
  bins_of_all_tracks += here.track.bins().size() - before;
  if (bins_of_all_tracks > most_bins_held && most_bins_of_a_track > fewest_bins) {
    coarsen_tracks(most_bins_of_a_track / 2);
  }
}

void CReportFigures::coarsen_tracks(std::size_t most_bins) {
  most_bins_of_a_track = most_bins;
  bins_of_all_tracks = 0;
  for (sequence_figures& sequence : with_repeats) {
    sequence.track.coarsen(most_bins);
    bins_of_all_tracks += sequence.track.bins().size();
  }
}

std::optional<std::string_view> CReportFigures::name_fault(const sequence_figures& sequence) const {
  if (!sequence.is_bed_name) return "unsuited";
  if (names.is_shared(sequence.name_key)) return "shared";
  if (!sequence.is_exact) return "altered";
  return std::nullopt;
}

std::optional<std::int64_t> CReportFigures::symbols() const {
  return lengths_are_known ? std::optional(symbol_count) : std::nullopt;
}

std::vector<const CReportFigures::unit_figures*> CReportFigures::most_frequent_units(std::size_t most) const {
  std::vector<const unit_figures*> units;
  units.reserve(by_unit.size());
  for (const unit_figures& unit : by_unit) units.push_back(&unit);
  const std::size_t count = std::min(most, units.size());
  std::partial_sort(units.begin(), units.begin() + static_cast<std::ptrdiff_t>(count), units.end(),
                    [](const unit_figures* a, const unit_figures* b) {
                      if (a->second.repeats != b->second.repeats) return a->second.repeats > b->second.repeats;
                      return a->first < b->first;
                    });
  units.resize(count);
  return units;
}
