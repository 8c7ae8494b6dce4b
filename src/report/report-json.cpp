#include "report-json.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <numeric>
#include <string_view>
#include <unordered_map>

#include "json-text.h"

namespace {

using nlohmann::ordered_json;

constexpr std::size_t most_units = 100;
constexpr std::size_t room_of_tracks = 4000000;
constexpr std::size_t room_of_alignments = 4000000;
constexpr std::size_t bins_worth_keeping = 64;

using sequence_list = std::vector<CReportFigures::sequence_figures>;

// What stands in the page of each sequence with repeats.
struct listed_sequences {
  std::vector<bool> has_track;
  std::vector<std::int64_t> rows;
  std::int64_t without_track = 0;
  std::int64_t most_repeats_without_track = 0;

  bool is_listed(std::size_t i) const { return has_track[i] || rows[i] > 0; }
};

// A number or a text; null for an optional value that is missing.
template <typename Value>
ordered_json json_of(const Value& value) {
  if constexpr (requires { value.has_value(); }) {
    return value.has_value() ? json_of(*value) : ordered_json();
  } else {
    return value;
  }
}

// An array of what `element` gives for each item.
template <typename Items, typename Element>
ordered_json array_of(const Items& items, Element element) {
  ordered_json array = ordered_json::array();
  for (const auto& item : items) array.push_back(json_of(element(item)));
  return array;
}

ordered_json totals_json(const CReportFigures& figures) {
  ordered_json json;
  json["repeats"] = figures.repeats();
  json["covered"] = figures.covered();
  json["sequences"] = figures.sequences();
  json["symbols"] = json_of(figures.symbols());
  return json;
}

ordered_json unit_lengths_json(const CReportFigures& figures) {
  const auto& all = figures.unit_lengths();
  ordered_json json;
  json["unitLength"] = array_of(all, [](const auto& entry) { return entry.first; });
  json["repeats"] = array_of(all, [](const auto& entry) { return entry.second.repeats; });
  json["covered"] = array_of(all, [](const auto& entry) { return entry.second.covered(); });
  return json;
}

ordered_json units_json(const CReportFigures& figures) {
  const auto units = figures.most_frequent_units(most_units);
  ordered_json json;
  json["distinct"] = figures.distinct_units();
  json["unit"] = array_of(units, [](const auto* unit) { return unit->first; });
  json["repeats"] = array_of(units, [](const auto* unit) { return unit->second.repeats; });
  json["covered"] = array_of(units, [](const auto* unit) { return unit->second.covered(); });
  return json;
}

ordered_json distribution_json(const CDistribution& distribution) {
  const auto cells = distribution.cells();
  ordered_json json;
  json["edges"] = distribution.edges();
  json["unitLength"] = array_of(cells, [](const auto& cell) { return cell.unit_length; });
  json["bin"] = array_of(cells, [](const auto& cell) { return cell.bin; });
  json["repeats"] = array_of(cells, [](const auto& cell) { return cell.repeats; });
  json["undefined"] = distribution.undefined();
  return json;
}

ordered_json head_json(const results_header& header, const std::string& results_name, const CReportFigures& figures) {
  ordered_json json;
  json["version"] = 1;
  json["program"] = "Quarvo, version " + header.program_version;
  json["results"]["name"] = results_name;
  json["results"]["format"] = header.format;
  json["settings"] = array_of(header.settings, [](const auto& entry) { return std::array{entry.first, entry.second}; });
  json["totals"] = totals_json(figures);
  json["unitLengths"] = unit_lengths_json(figures);
  json["units"] = units_json(figures);
  ordered_json& distributions = json["distributions"];
  distributions["longest"] = CDistribution::longest;
  distributions["length"] = distribution_json(figures.lengths());
  distributions["copies"] = distribution_json(figures.copies());
  distributions["perfection"] = distribution_json(figures.perfections());
  return json;
}

ordered_json track_json(const CTrack& track) {
  ordered_json json;
  json["width"] = track.width();
  json["starts"] = array_of(track.bins(), [](const CTrack::bin& bin) { return bin.starts; });
  json["covered"] = array_of(track.bins(), [](const CTrack::bin& bin) { return bin.covered; });
  return json;
}

std::size_t track_size(const CTrack& track) {
  constexpr std::size_t keys_and_brackets = 50;
  return std::accumulate(
      track.bins().begin(), track.bins().end(), keys_and_brackets,
      [](std::size_t sum, const CTrack::bin& bin) { return sum + json_size(bin.starts) + json_size(bin.covered); });
}

// What a sequence takes besides its track.
std::size_t name_size(const CReportFigures::sequence_figures& sequence) {
  constexpr std::size_t a_missing_track = 5;
  constexpr std::size_t a_name_fault = 11;  // the longest word
  return a_name_fault + json_size(sequence.ordinal) + json_size(sequence.name) + json_size(sequence.title) +
         json_size(sequence.length.value_or(1000)) + 2 * json_size(sequence.repeats) + json_size(sequence.covered) +
         a_missing_track;
}

std::size_t size_of_tracks(const sequence_list& sequences) {
  return std::accumulate(sequences.begin(), sequences.end(), std::size_t{0},
                         [](std::size_t sum, const auto& sequence) { return sum + track_size(sequence.track); });
}

void coarsen_to_room(CReportFigures& figures) {
  std::size_t most_bins = std::size_t{1} << 13;
  while (size_of_tracks(figures.sequences_with_repeats()) > room_of_tracks && most_bins >= bins_worth_keeping) {
    figures.coarsen_tracks(most_bins);
    most_bins /= 2;
  }
}

// Gives tracks to the sequences with the most repeats, as long as there is room. Returns the bytes they take.
std::size_t choose_tracks(const sequence_list& sequences, listed_sequences& listed) {
  std::vector<std::size_t> order(sequences.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&sequences](std::size_t a, std::size_t b) { return sequences[a].repeats > sequences[b].repeats; });
  std::size_t used = 0;
  for (const std::size_t i : order) {
    const std::size_t cost = track_size(sequences[i].track) + name_size(sequences[i]);
    if (listed.without_track > 0 || used + cost > room_of_tracks + room_of_tracks / 2) {
      if (listed.without_track++ == 0) listed.most_repeats_without_track = sequences[i].repeats;
      continue;
    }
    listed.has_track[i] = true;
    used += cost;
  }
  return used;
}

std::vector<CRepeatList::sequence_cost> sequence_costs(const sequence_list& sequences, const listed_sequences& listed) {
  std::vector<CRepeatList::sequence_cost> costs(sequences.size());
  for (std::size_t i = 0; i < costs.size(); ++i) {
    const CTrack& track = sequences[i].track;
    costs[i].name = listed.has_track[i] ? 0 : name_size(sequences[i]);
    costs[i].extent = static_cast<std::int64_t>(track.bins().size()) * track.width();
  }
  return costs;
}

ordered_json sequences_json(const CReportFigures& figures, const listed_sequences& listed) {
  const sequence_list& sequences = figures.sequences_with_repeats();
  std::vector<std::size_t> shown;
  for (std::size_t i = 0; i < sequences.size(); ++i) {
    if (listed.is_listed(i)) shown.push_back(i);
  }
  ordered_json json;
  json["ordinal"] = array_of(shown, [&](std::size_t i) { return sequences[i].ordinal; });
  json["name"] = array_of(shown, [&](std::size_t i) { return sequences[i].name; });
  json["nameFault"] = array_of(shown, [&](std::size_t i) { return figures.name_fault(sequences[i]); });
  json["title"] = array_of(shown, [&](std::size_t i) { return sequences[i].title; });
  json["length"] = array_of(shown, [&](std::size_t i) { return sequences[i].length; });
  json["repeats"] = array_of(shown, [&](std::size_t i) { return sequences[i].repeats; });
  json["covered"] = array_of(shown, [&](std::size_t i) { return sequences[i].covered; });
  json["listed"] = array_of(shown, [&](std::size_t i) { return listed.rows[i]; });
  json["track"] = array_of(
      shown, [&](std::size_t i) { return listed.has_track[i] ? track_json(sequences[i].track) : ordered_json(); });
  return json;
}

// The units of the rows, each once, and the index of each row's.
struct unit_index {
  std::vector<std::string_view> texts;
  std::vector<std::size_t> of_row;

  explicit unit_index(const std::vector<CRepeatList::row>& rows) {
    std::unordered_map<std::string_view, std::size_t> known;
    of_row.reserve(rows.size());
    for (const auto& row : rows) {
      const auto [entry, is_new] = known.try_emplace(row.unit, texts.size());
      if (is_new) texts.push_back(row.unit);
      of_row.push_back(entry->second);
    }
  }
};

std::vector<int> steps_of(const std::vector<CRepeatList::row>& rows) {
  std::vector<int> steps;
  steps.reserve(rows.size());
  const CRepeatList::row* before = nullptr;
  for (const auto& row : rows) {
    steps.push_back(before != nullptr && before->sequence == row.sequence ? row.start - before->start : row.start);
    before = &row;
  }
  return steps;
}

ordered_json repeats_json(const results_header& header, const std::vector<CRepeatList::row>& rows) {
  const unit_index units(rows);
  // The columns of edits that the file does not give are empty.
  const std::vector<CRepeatList::row> none;
  const auto& with_edits = header.format == quarvo_format ? none : rows;
  const auto& with_Ns = header.Ns_are_missense ? none : with_edits;
  ordered_json json;
  json["unitTexts"] = array_of(units.texts, [](std::string_view text) { return text; });
  json["step"] = steps_of(rows);
  json["length"] = array_of(rows, [](const auto& row) { return row.span; });
  json["excess"] = array_of(rows, [](const auto& row) { return row.excess; });
  json["unit"] = units.of_row;
  json["score"] = array_of(rows, [](const auto& row) { return row.score; });
  json["defect"] = array_of(rows, [](const auto& row) { return row.defect; });
  json["mismatches"] = array_of(with_edits, [](const auto& row) { return row.mismatches; });
  json["insertions"] = array_of(with_edits, [](const auto& row) { return row.insertions; });
  json["deletions"] = array_of(with_edits, [](const auto& row) { return row.deletions; });
  json["ns"] = array_of(with_Ns, [](const auto& row) { return row.Ns; });
  return json;
}

std::string_view kind_of_lines(const results_header& header) {
  if (header.format == one_per_line_format || header.print_mode == print_sequence) return "sequence";
  return header.print_mode == print_alignment ? "alignment" : "none";
}

ordered_json alignments_json(const results_header& header, const CRepeatList& list) {
  ordered_json json;
  json["kind"] = kind_of_lines(header);
  json["repeat"] = ordered_json::array();
  json["lines"] = ordered_json::array();
  auto text = list.alignments().begin();
  std::int64_t index = -1;
  for (const auto& row : list.rows()) {
    ++index;
    while (text != list.alignments().end() && text->order < row.order) ++text;
    if (text == list.alignments().end() || text->order != row.order) continue;
    json["repeat"].push_back(index);
    json["lines"].push_back(text->lines);
  }
  return json;
}

ordered_json cut_json(const CReportFigures& figures, const CRepeatList& list, const listed_sequences& listed) {
  const bool are_repeats_cut = list.repeats_left_out() > 0 && !list.rows().empty();
  const bool are_alignments_cut = list.alignments_left_out() > 0;
  ordered_json json;
  json["repeats"] = list.repeats_left_out();
  json["score"] = are_repeats_cut ? ordered_json(list.lowest_score()) : ordered_json();
  json["listedOfScore"] = are_repeats_cut ? list.listed_of_lowest_score() : 0;
  json["alignments"] = list.alignments_left_out();
  json["alignmentScore"] = are_alignments_cut ? ordered_json(list.best_score_left_out()) : ordered_json();
  json["longAlignments"] = list.long_alignments_left_out();
  json["tracks"] = listed.without_track;
  json["trackRepeats"] = listed.most_repeats_without_track;
  json["names"] = figures.shortened_names();
  return json;
}

}  // namespace

std::string report_json(const results_header& header, const std::string& results_name, CReportFigures& figures,
                        CRepeatList& list, std::size_t room) {
  constexpr std::size_t keys_and_cuts = 2000;
  ordered_json json = head_json(header, results_name, figures);
  std::size_t used = keys_and_cuts + inert_json(json).size() - 2;  // the brackets are among the keys

  coarsen_to_room(figures);
  const sequence_list& sequences = figures.sequences_with_repeats();
  listed_sequences listed{std::vector<bool>(sequences.size()), std::vector<std::int64_t>(sequences.size())};
  used += choose_tracks(sequences, listed);
  list.finish(room > used ? room - used : 0, room_of_alignments, sequence_costs(sequences, listed));
  for (const auto& row : list.rows()) ++listed.rows[row.sequence];

  json["sequences"] = sequences_json(figures, listed);
  json["repeats"] = repeats_json(header, list.rows());
  json["alignments"] = alignments_json(header, list);
  json["cut"] = cut_json(figures, list, listed);
  return inert_json(json);
}
