// What is left out when a page has little room, and that the page says so.

#include <gtest/gtest.h>

#include <algorithm>

#include "report-json.h"

namespace {

results_header header_of(int print_mode) {
  results_header header;
  header.format = 1;
  header.print_mode = print_mode;
  header.program_version = "1";
  return header;
}

results_sequence sequence_of(std::int64_t ordinal, const std::string& full_name, int length) {
  results_sequence sequence;
  sequence.ordinal = ordinal;
  sequence.full_name = full_name;
  sequence.name = full_name.substr(0, full_name.find(' '));
  sequence.length = length;
  return sequence;
}

results_repeat repeat_of(int start, int score, std::size_t alignment_length) {
  results_repeat repeat;
  repeat.start = start;
  repeat.span = repeat.length = 20;
  repeat.end = start + 19;
  repeat.score = score;
  repeat.perfection = 100;
  repeat.unit_length = 2;
  repeat.unit = repeat.normal_form = "AC";
  repeat.mismatches = repeat.insertions = repeat.deletions = repeat.Ns = 0;
  if (alignment_length > 0) {
    const std::string text(alignment_length, 'A');
    repeat.alignment = {text, std::string(alignment_length, '|'), text};
  }
  return repeat;
}

class ReportCut : public ::testing::Test {
 protected:
  CReportFigures figures;
  CRepeatList list;

  void add(const results_repeat& repeat) {
    figures.add(repeat);
    list.add(figures.current_sequence(), repeat);
  }

  std::string json(std::size_t room, int print_mode = 2) {
    return report_json(header_of(print_mode), "results.txt", figures, list, room);
  }

  static bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
};

TEST_F(ReportCut, NothingIsCutWhereThereIsRoom) {
  figures.add(sequence_of(1, "one", 1000000));
  for (int i = 0; i < 1000; ++i) add(repeat_of(1 + i * 30, i % 50, 30));
  const std::string data = json(19000000);
  EXPECT_EQ(list.rows().size(), 1000U);
  EXPECT_EQ(list.alignments().size(), 1000U);
  EXPECT_TRUE(has(data, R"("cut":{"repeats":0,"score":null,"listedOfScore":0,"alignments":0,"alignmentScore":null,)"
                        R"("longAlignments":0,"tracks":0,"trackRepeats":0,"names":0})"));
}

TEST_F(ReportCut, LowScoresGoFirstAndThePageFits) {
  constexpr std::size_t room = 800000;
  constexpr int repeats = 40000;
  figures.add(sequence_of(1, "one", 100000000));
  for (int i = 0; i < repeats; ++i) add(repeat_of(1 + i * 30, i % 50, 0));
  const std::string data = json(room, 0);
  EXPECT_LE(data.size(), room);
  EXPECT_GT(data.size(), room * 8 / 10) << "room is wasted";
  const auto kept = static_cast<std::int64_t>(list.rows().size());
  EXPECT_EQ(kept + list.repeats_left_out(), repeats);
  const int lowest = list.lowest_score();
  EXPECT_EQ(kept, (49 - lowest) * (repeats / 50) + list.listed_of_lowest_score());
  EXPECT_TRUE(has(
      data, "\"repeats\":" + std::to_string(list.repeats_left_out()) + ",\"score\":" + std::to_string(lowest) + ","));
  EXPECT_TRUE(has(data, "\"totals\":{\"repeats\":40000,")) << "all are counted";
}

TEST_F(ReportCut, AlignmentsOfLowScoresGoBeforeRepeats) {
  figures.add(sequence_of(1, "one", 100000000));
  for (int i = 0; i < 20000; ++i) add(repeat_of(1 + i * 30, i % 50, 400));
  const std::string data = json(6000000);
  EXPECT_LE(data.size(), 6000000U);
  EXPECT_EQ(list.repeats_left_out(), 0);
  EXPECT_GT(list.alignments_left_out(), 0);
  EXPECT_EQ(static_cast<std::int64_t>(list.alignments().size()) + list.alignments_left_out(), 20000);
  const int best = list.best_score_left_out();
  EXPECT_TRUE(std::all_of(list.alignments().begin(), list.alignments().end(),
                          [best](const auto& text) { return text.score >= best; }));
}

TEST_F(ReportCut, OneLongAlignmentDoesNotDisplaceOthers) {
  figures.add(sequence_of(1, "one", 100000000));
  add(repeat_of(1, 1000, CRepeatList::longest_alignment + 1));
  add(repeat_of(2, 5, CRepeatList::longest_alignment));
  json(19000000);
  EXPECT_EQ(list.long_alignments_left_out(), 1);
  EXPECT_EQ(list.alignments_left_out(), 0);
  EXPECT_EQ(list.alignments().size(), 1U);
}

TEST_F(ReportCut, ManySequencesKeepTheTracksOfTheRichest) {
  constexpr int sequences = 200000;
  for (int i = 1; i <= sequences; ++i) {
    figures.add(sequence_of(i, "record" + std::to_string(i) + " of many", 100));
    for (int k = 0; k <= i % 3; ++k) add(repeat_of(1 + 30 * k, 7, 0));
  }
  const std::string data = json(19500000, 0);
  EXPECT_LE(data.size(), 19500000U);
  const std::size_t without = data.rfind("\"tracks\":");
  const long tracks = std::stol(data.substr(without + 9));
  EXPECT_GT(tracks, sequences / 2);
  EXPECT_LT(tracks, sequences);
}

TEST_F(ReportCut, ManyLongSequencesGetCoarserTracks) {
  for (int i = 1; i <= 100; ++i) {
    figures.add(sequence_of(i, "chromosome" + std::to_string(i), 200000000));
    for (int k = 0; k < 600; ++k) add(repeat_of(1 + 300000 * k, 7, 0));
  }
  const std::string data = json(19500000, 0);
  EXPECT_LE(data.size(), 19500000U);
  EXPECT_TRUE(has(data, "\"tracks\":0,"));
  for (const auto& sequence : figures.sequences_with_repeats()) {
    EXPECT_GE(sequence.track.bins().size(), 512U);
    EXPECT_EQ(sequence.track.width(), figures.sequences_with_repeats()[0].track.width());
  }
}

TEST_F(ReportCut, LongUnitsAndNamesCountForTheirSize) {
  figures.add(sequence_of(1, std::string(1000000, 'n') + " " + std::string(1000000, 't'), 100000000));
  for (int i = 0; i < 3000; ++i) {
    results_repeat repeat = repeat_of(1 + i * 30, i, 0);
    repeat.unit_length = 10000;
    repeat.unit = repeat.normal_form = std::to_string(i) + std::string(10000 - std::to_string(i).size(), 'A');
    add(repeat);
  }
  const std::string data = json(19500000, 0);
  EXPECT_LE(data.size(), 19500000U);
  EXPECT_GT(list.rows().size(), 1500U);
  EXPECT_LT(list.rows().size(), 3000U);
  EXPECT_TRUE(has(data, "\"names\":1}"));
}

}  // namespace
