#include "report-json.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <unordered_map>

#include "CJsonText.h"

namespace {

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

void write_head(CJsonText& json, const results_header& header, const std::string& results_name) {
  json.key("version").value(1).key("program").value("Quarvo, version " + header.program_version);
  json.key("results").begin_object().key("name").value(results_name).key("format").value(header.format).end_object();
  json.key("settings").begin_array();
  for (const auto& [label, value] : header.settings) json.begin_array().value(label).value(value).end_array();
  json.end_array();
}

void write_totals(CJsonText& json, const CReportFigures& figures) {
  json.key("totals").begin_object().key("repeats").value(figures.repeats());
  json.key("covered").value(figures.covered()).key("sequences").value(figures.sequences());
  json.key("symbols");
  if (const auto symbols = figures.symbols(); symbols.has_value()) {
    json.value(*symbols);
  } else {
    json.null();
  }
  json.end_object();
}

void write_unit_lengths(CJsonText& json, const CReportFigures& figures) {
  const auto& all = figures.unit_lengths();
  json.key("unitLengths").begin_object();
  json.array("unitLength", all, [](const auto& entry) { return entry.first; });
  json.array("repeats", all, [](const auto& entry) { return entry.second.repeats; });
  json.array("covered", all, [](const auto& entry) { return entry.second.covered(); });
  json.end_object();
}

void write_units(CJsonText& json, const CReportFigures& figures) {
  const auto units = figures.most_frequent_units(most_units);
  json.key("units").begin_object().key("distinct").value(static_cast<std::int64_t>(figures.distinct_units()));
  json.array("unit", units, [](const auto* unit) { return std::string_view(unit->first); });
  json.array("repeats", units, [](const auto* unit) { return unit->second.repeats; });
  json.array("covered", units, [](const auto* unit) { return unit->second.covered(); });
  json.end_object();
}

void write_distribution(CJsonText& json, std::string_view name, const CDistribution& distribution) {
  const auto cells = distribution.cells();
  json.key(name).begin_object();
  json.array("edges", distribution.edges(), [](int edge) { return edge; });
  json.array("unitLength", cells, [](const auto& cell) { return cell.unit_length; });
  json.array("bin", cells, [](const auto& cell) { return cell.bin; });
  json.array("repeats", cells, [](const auto& cell) { return cell.repeats; });
  json.key("undefined").value(distribution.undefined()).end_object();
}

std::string head_json(const results_header& header, const std::string& results_name, const CReportFigures& figures) {
  CJsonText json;
  write_head(json, header, results_name);
  write_totals(json, figures);
  write_unit_lengths(json, figures);
  write_units(json, figures);
  json.key("distributions").begin_object().key("longest").value(CDistribution::longest);
  write_distribution(json, "length", figures.lengths());
  write_distribution(json, "copies", figures.copies());
  write_distribution(json, "perfection", figures.perfections());
  json.end_object();
  return json.text();
}

void write_track(CJsonText& json, const CTrack& track) {
  json.begin_object().key("width").value(track.width());
  json.array("starts", track.bins(), [](const CTrack::bin& bin) { return bin.starts; });
  json.array("covered", track.bins(), [](const CTrack::bin& bin) { return bin.covered; });
  json.end_object();
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

void write_sequences(CJsonText& json, const CReportFigures& figures, const listed_sequences& listed) {
  const sequence_list& sequences = figures.sequences_with_repeats();
  std::vector<std::size_t> shown;
  for (std::size_t i = 0; i < sequences.size(); ++i) {
    if (listed.is_listed(i)) shown.push_back(i);
  }
  json.key("sequences").begin_object();
  json.array("ordinal", shown, [&](std::size_t i) { return sequences[i].ordinal; });
  json.array("name", shown, [&](std::size_t i) { return std::string_view(sequences[i].name); });
  json.array("nameFault", shown, [&](std::size_t i) { return figures.name_fault(sequences[i]); });
  json.array("title", shown, [&](std::size_t i) { return std::string_view(sequences[i].title); });
  json.array("length", shown, [&](std::size_t i) { return sequences[i].length; });
  json.array("repeats", shown, [&](std::size_t i) { return sequences[i].repeats; });
  json.array("covered", shown, [&](std::size_t i) { return sequences[i].covered; });
  json.array("listed", shown, [&](std::size_t i) { return listed.rows[i]; });
  json.key("track").begin_array();
  for (const std::size_t i : shown) {
    if (listed.has_track[i]) {
      write_track(json, sequences[i].track);
    } else {
      json.null();
    }
  }
  json.end_array().end_object();
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

// The columns of edits that the file does not give are empty.
void write_edits(CJsonText& json, const results_header& header, const std::vector<CRepeatList::row>& rows) {
  const std::vector<CRepeatList::row> none;
  const auto& with_edits = header.format == 0 ? none : rows;
  const auto& with_Ns = header.Ns_are_missense ? none : with_edits;
  json.array("mismatches", with_edits, [](const auto& row) { return row.mismatches; });
  json.array("insertions", with_edits, [](const auto& row) { return row.insertions; });
  json.array("deletions", with_edits, [](const auto& row) { return row.deletions; });
  json.array("ns", with_Ns, [](const auto& row) { return row.Ns; });
}

void write_repeats(CJsonText& json, const results_header& header, const std::vector<CRepeatList::row>& rows) {
  const unit_index units(rows);
  json.key("repeats").begin_object();
  json.array("unitTexts", units.texts, [](std::string_view text) { return text; });
  json.array("step", steps_of(rows), [](int step) { return step; });
  json.array("length", rows, [](const auto& row) { return row.span; });
  json.array("excess", rows, [](const auto& row) { return row.excess; });
  json.array("unit", units.of_row, [](std::size_t index) { return index; });
  json.array("score", rows, [](const auto& row) { return row.score; });
  json.array("defect", rows, [](const auto& row) { return row.defect; });
  write_edits(json, header, rows);
  json.end_object();
}

std::string_view kind_of_lines(const results_header& header) {
  if (header.format == 3 || header.print_mode == 1) return "sequence";
  return header.print_mode == 2 ? "alignment" : "none";
}

void write_alignments(CJsonText& json, const results_header& header, const CRepeatList& list) {
  CJsonText lines;
  lines.begin_array();
  json.key("alignments").begin_object().key("kind").value(kind_of_lines(header)).key("repeat").begin_array();
  auto text = list.alignments().begin();
  std::int64_t index = -1;
  for (const auto& row : list.rows()) {
    ++index;
    while (text != list.alignments().end() && text->order < row.order) ++text;
    if (text == list.alignments().end() || text->order != row.order) continue;
    json.value(index);
    lines.begin_array();
    for (const std::string& line : text->lines) lines.value(line);
    lines.end_array();
  }
  json.end_array().key("lines").finished(lines.end_array().text()).end_object();
}

void write_optional(CJsonText& json, std::string_view key, bool is_there, int number) {
  json.key(key);
  if (is_there) {
    json.value(number);
  } else {
    json.null();
  }
}

void write_cut(CJsonText& json, const CReportFigures& figures, const CRepeatList& list,
               const listed_sequences& listed) {
  const bool are_repeats_cut = list.repeats_left_out() > 0 && !list.rows().empty();
  json.key("cut").begin_object().key("repeats").value(list.repeats_left_out());
  write_optional(json, "score", are_repeats_cut, list.lowest_score());
  json.key("listedOfScore").value(are_repeats_cut ? list.listed_of_lowest_score() : 0);
  json.key("alignments").value(list.alignments_left_out());
  write_optional(json, "alignmentScore", list.alignments_left_out() > 0, list.best_score_left_out());
  json.key("longAlignments").value(list.long_alignments_left_out());
  json.key("tracks").value(listed.without_track).key("trackRepeats").value(listed.most_repeats_without_track);
  json.key("names").value(figures.shortened_names()).end_object();
}

}  // namespace

std::string report_json(const results_header& header, const std::string& results_name, CReportFigures& figures,
                        CRepeatList& list, std::size_t room) {
  constexpr std::size_t keys_and_cuts = 2000;
  CJsonText json;
  json.begin_object();
  std::size_t used = keys_and_cuts;
  const std::string head = head_json(header, results_name, figures);
  used += head.size();
  json.finished(head);

  coarsen_to_room(figures);
  const sequence_list& sequences = figures.sequences_with_repeats();
  listed_sequences listed{std::vector<bool>(sequences.size()), std::vector<std::int64_t>(sequences.size())};
  used += choose_tracks(sequences, listed);
  list.finish(room > used ? room - used : 0, room_of_alignments, sequence_costs(sequences, listed));
  for (const auto& row : list.rows()) ++listed.rows[row.sequence];

  write_sequences(json, figures, listed);
  write_repeats(json, header, list.rows());
  write_alignments(json, header, list);
  write_cut(json, figures, list, listed);
  return json.end_object().text();
}
