#include "CSummary.h"

#include <gtest/gtest.h>

#include "CSummaryConversion.h"

namespace {

results_repeat repeat_at(int start, int end, const std::string& unit) {
  results_repeat repeat;
  repeat.start = start;
  repeat.end = end;
  repeat.unit = repeat.normal_form = unit;
  repeat.unit_length = static_cast<int>(unit.size());
  return repeat;
}

results_sequence named(const std::string& name, std::optional<int> length = 100) {
  results_sequence sequence;
  sequence.name = name;
  sequence.length = length;
  return sequence;
}

TEST(Summary, CountsASymbolOnceInEachGroup) {
  CSummary summary;
  summary.begin_sequence(named("a"));
  summary.add(repeat_at(1, 10, "AC"));
  summary.add(repeat_at(5, 12, "AC"));   // two symbols more
  summary.add(repeat_at(6, 8, "AG"));    // hidden among all, new among AG
  summary.add(repeat_at(13, 13, "A"));   // next to the one before
  summary.add(repeat_at(20, 29, "AC"));  // after a gap
  EXPECT_EQ(summary.all().repeats, 5);
  EXPECT_EQ(summary.all().covered(), 23);
  EXPECT_EQ(summary.by_unit_length().at(1).covered(), 1);
  EXPECT_EQ(summary.by_unit_length().at(2).covered(), 22);
  const auto units = summary.by_unit();
  ASSERT_EQ(units.size(), 3U);
  EXPECT_EQ(units[0].first, "A");
  EXPECT_EQ(units[1].first, "AC");
  EXPECT_EQ(units[1].second.covered(), 22);
  EXPECT_EQ(units[2].second.covered(), 3);
}

TEST(Summary, BeginsEachSequenceUncovered) {
  CSummary summary;
  summary.begin_sequence(named("a"));
  summary.add(repeat_at(50, 90, "AC"));
  summary.begin_sequence(named("b"));
  summary.begin_sequence(named("c"));
  summary.add(repeat_at(1, 10, "AC"));
  EXPECT_EQ(summary.all().covered(), 51);
  ASSERT_EQ(summary.by_sequence().size(), 3U);
  EXPECT_EQ(summary.by_sequence()[1].counts.repeats, 0);
  EXPECT_EQ(summary.by_sequence()[2].counts.covered(), 10);
}

TEST(Summary, KnowsTheTotalLengthOnlyWhenItKnowsAll) {
  CSummary summary;
  EXPECT_EQ(summary.total_length(), 0);
  summary.begin_sequence(named("a", 2147483647));
  summary.begin_sequence(named("b", 2147483647));
  EXPECT_EQ(summary.total_length(), 4294967294);
  summary.begin_sequence(named("c", std::nullopt));
  EXPECT_EQ(summary.total_length(), std::nullopt);
}

TEST(Summary, SortsUnitsByLengthThenAlphabet) {
  CSummary summary;
  summary.begin_sequence(named("a"));
  for (const char* unit : {"AAG", "C", "AT", "AAC", "AC", "A"}) summary.add(repeat_at(1, 1, unit));
  std::string order;
  for (const auto& [unit, counts] : summary.by_unit()) order += unit + ' ';
  EXPECT_EQ(order, "A C AC AT AAC AAG ");
}

TEST(Density, IsNothingWithoutSymbols) {
  EXPECT_EQ(per_megabase(5, std::nullopt), std::nullopt);
  EXPECT_EQ(per_megabase(0, 0), std::nullopt);
  EXPECT_DOUBLE_EQ(*per_megabase(3, 1500000), 2.0);
  EXPECT_DOUBLE_EQ(*per_megabase(0, 10), 0.0);
}

}  // namespace
