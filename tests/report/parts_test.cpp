// The parts of a report's figures: coverage, tracks, distributions, the cut by score, shortened names.

#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <random>

#include "CCoverage.h"
#include "CDistribution.h"
#include "CScoreCut.h"
#include "CTrack.h"
#include "printed-lines.h"
#include "shortened-text.h"

namespace {

TEST(Coverage, CountsASymbolOnce) {
  CCoverage coverage;
  EXPECT_EQ(coverage.add(0, 5, 10), 5);
  EXPECT_EQ(coverage.add(0, 8, 12), 11);
  EXPECT_EQ(coverage.add(0, 9, 11), 12);
  EXPECT_EQ(coverage.add(0, 20, 20), 20);
  EXPECT_EQ(coverage.symbols(), 9);
}

TEST(Coverage, BeginsAnewWithEachSequence) {
  CCoverage coverage;
  coverage.add(0, 1, 10);
  EXPECT_EQ(coverage.add(1, 3, 5), 3);
  EXPECT_EQ(coverage.symbols(), 13);
}

TEST(Coverage, ReachesTheLastPosition) {
  constexpr int last = std::numeric_limits<int>::max();
  CCoverage coverage;
  coverage.add(0, 1, last - 1);
  EXPECT_EQ(coverage.add(0, 1, last), last);
  EXPECT_EQ(coverage.symbols(), last);
}

// Bins counted symbol by symbol.
struct plain_track {
  std::vector<bool> is_covered = std::vector<bool>(100001);
  std::vector<int> starts;

  void add(int start, int end) {
    starts.push_back(start);
    for (int position = start; position <= end; ++position) is_covered[static_cast<std::size_t>(position)] = true;
  }

  void expect_equal(const CTrack& track) const {
    for (std::size_t i = 0; i < track.bins().size(); ++i) {
      const auto from = static_cast<int>(static_cast<std::int64_t>(i) * track.width());
      const int to = from + static_cast<int>(track.width());
      const auto begin = is_covered.begin() + from + 1;
      const auto end = is_covered.begin() + std::min(to + 1, 100001);
      EXPECT_EQ(track.bins()[i].covered, std::count(begin, end, true));
      EXPECT_EQ(track.bins()[i].starts,
                std::count_if(starts.begin(), starts.end(), [=](int start) { return start > from && start <= to; }));
    }
  }
};

TEST(Track, EqualsACountSymbolBySymbol) {
  for (const std::size_t most_bins : {1U, 7U, 64U, 100000U}) {
    std::mt19937 random(static_cast<unsigned>(most_bins));
    CTrack track;
    CCoverage coverage;
    plain_track expected;
    for (int start = 1; start < 99000; start += 1 + static_cast<int>(random() % 300)) {
      const int end = start + static_cast<int>(random() % 1000);
      track.add(start, coverage.add(0, start, end), end, most_bins);
      expected.add(start, end);
    }
    EXPECT_LE(track.bins().size(), most_bins);
    expected.expect_equal(track);
    track.coarsen(3);
    EXPECT_LE(track.bins().size(), 3U);
    expected.expect_equal(track);
  }
}

TEST(Track, HoldsARepeatAtTheLastPosition) {
  constexpr int last = std::numeric_limits<int>::max();
  CTrack track;
  track.add(1, 1, last, 4);
  EXPECT_EQ(track.bins().size(), 4U);
  std::int64_t covered = 0;
  for (const CTrack::bin& bin : track.bins()) covered += bin.covered;
  EXPECT_EQ(covered, last);
}

TEST(Distribution, PutsAValueOnAnEdgeAboveIt) {
  CDistribution distribution({0, 10, 20});
  for (const double value : {-3.0, 0.0, 9.999, 10.0, 20.0, 1e9}) distribution.add(2, value);
  const auto cells = distribution.cells();
  ASSERT_EQ(cells.size(), 3U);
  EXPECT_EQ(cells[0].repeats, 3);
  EXPECT_EQ(cells[1].repeats, 1);
  EXPECT_EQ(cells[2].repeats, 2);
  EXPECT_EQ(cells[2].unit_length, 2);
}

TEST(Distribution, CountsWhatIsNoNumberApart) {
  CDistribution distribution(edges_of_percentages());
  distribution.add(1, std::numeric_limits<double>::quiet_NaN());
  distribution.add(1, 100);
  EXPECT_EQ(distribution.undefined(), 1);
  ASSERT_EQ(distribution.cells().size(), 1U);
  EXPECT_EQ(distribution.cells()[0].bin, 100);
}

TEST(Distribution, CountsLongUnitsTogether) {
  CDistribution distribution(edges_of_sizes());
  for (const int unit_length : {1000, 1001, 10000}) distribution.add(unit_length, 20000);
  const auto cells = distribution.cells();
  ASSERT_EQ(cells.size(), 2U);
  EXPECT_EQ(cells[0].unit_length, 1000);
  EXPECT_EQ(cells[1].unit_length, 1001);
  EXPECT_EQ(cells[1].repeats, 2);
}

TEST(Distribution, EdgesOfSizesAscendToTheLongestSequence) {
  const std::vector<int> edges = edges_of_sizes();
  for (std::size_t i = 1; i < edges.size(); ++i) EXPECT_LT(edges[i - 1], edges[i]);
  EXPECT_EQ(edges[1], 1);
  EXPECT_GE(edges.back(), 900000000);
}

struct scored {
  int score;
  std::int64_t order;
  std::size_t bytes;
};

TEST(ScoreCut, KeepsTheBestHoweverLateTheyCome) {
  std::mt19937 random(1);
  std::vector<scored> all;
  CScoreCut<scored> cut(1000);
  for (int i = 0; i < 5000; ++i) {
    all.push_back({static_cast<int>(random() % 100), i, 10});
    cut.add(all.back());
  }
  cut.finish(500, [](const scored& item) { return item.bytes; });
  std::sort(all.begin(), all.end(), [](const scored& a, const scored& b) {
    return a.score != b.score ? a.score > b.score : a.order < b.order;
  });
  all.resize(50);
  const int lowest = all.back().score;
  std::sort(all.begin(), all.end(), [](const scored& a, const scored& b) { return a.order < b.order; });
  ASSERT_EQ(cut.kept().size(), 50U);
  for (std::size_t i = 0; i < 50; ++i) EXPECT_EQ(cut.kept()[i].order, all[i].order);
  EXPECT_EQ(cut.left_out(), 4950);
  EXPECT_EQ(cut.lowest_score(), lowest);
  EXPECT_EQ(cut.kept_of_lowest_score(),
            std::count_if(all.begin(), all.end(), [lowest](const scored& item) { return item.score == lowest; }));
}

TEST(ScoreCut, KeepsAllWhenThereIsRoom) {
  CScoreCut<scored> cut(1000);
  for (int i = 0; i < 50; ++i) cut.add({i % 3, i, 10});
  cut.finish(500, [](const scored& item) { return item.bytes; });
  EXPECT_EQ(cut.kept().size(), 50U);
  EXPECT_EQ(cut.left_out(), 0);
}

TEST(ShortenedText, KeepsShortTextsAndCutsLongOnesBetweenCharacters) {
  EXPECT_EQ(shortened_text(std::string(longest_name, 'x')), std::string(longest_name, 'x'));
  EXPECT_EQ(shortened_text(std::string(longest_name + 1, 'x'), 17), std::string(longest_name, 'x') + "...#17");
  const std::string before(longest_name - 1, 'x');
  EXPECT_EQ(shortened_text(before + "\xe2\x82\xac and more"), before + "...");
  EXPECT_EQ(shortened_text(std::string(1000, '\x80')).size(), longest_name - 4 + 3);
}

TEST(PrintedLines, GiveAPerfectAlignmentByItsSequence) {
  results_repeat repeat;
  repeat.alignment = {"ACACAC", "||||||", "ACACAC"};
  EXPECT_EQ(printed_lines(repeat), (std::vector<std::string>{"ACACAC"}));
  repeat.alignment = {"ACANAC", "|||*||", "ACACAC"};
  EXPECT_EQ(printed_lines(repeat), (std::vector<std::string>{"ACANAC", "|||*||", "ACACAC"}));
}

TEST(PrintedLines, ShowFlanksBehindColons) {
  results_repeat repeat;
  repeat.left_flank = "GG";
  repeat.right_flank = "T";
  repeat.sequence = "ACAC";
  EXPECT_EQ(printed_lines(repeat), (std::vector<std::string>{"GG:ACAC:T"}));
  repeat.alignment = {"ACAC", "||||", "ACAC"};
  EXPECT_EQ(printed_lines(repeat), (std::vector<std::string>{"GG:ACAC:T", "   ||||  ", "   ACAC  "}));
}

TEST(PrintedLines, AreNoneWhereTheFileHasNone) { EXPECT_TRUE(printed_lines(results_repeat()).empty()); }

}  // namespace
