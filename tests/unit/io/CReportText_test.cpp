// The text of the results, compared with formatted printing.

#include "CReportText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/random-dna.h"
#include "support/stream-text.h"

namespace {

std::string written(const CReportText& text) {
  return text_of([&text](std::FILE* out) { text.write_to(out); });
}

std::string number(int value, unsigned width) {
  CReportText text;
  text.number(value, width);
  return written(text);
}

std::string fixed(float value, int decimals, unsigned width) {
  CReportText text;
  text.fixed(value, decimals, width);
  return written(text);
}

std::string number_by_printf(int value, unsigned width) {
  char bytes[200];
  std::snprintf(bytes, sizeof bytes, "%*d", static_cast<int>(width), value);
  return bytes;
}

std::string fixed_by_printf(float value, int decimals, unsigned width) {
  char bytes[200];
  std::snprintf(bytes, sizeof bytes, "%*.*f", static_cast<int>(width), decimals, static_cast<double>(value));
  return bytes;
}

TEST(ReportText, StandsInTheOrderOfTheCalls) {
  const std::string symbols = "ACGT";
  CReportText text;
  text.text("a ").stretch(symbols.data() + 1, symbols.data() + 3).symbol('|').number(-5, 4);
  EXPECT_EQ(written(text), "a CG|  -5");
}

TEST(ReportText, WritesBytesOfAnyValue) {
  CReportText text;
  text.symbol('\0').symbol('\n');
  EXPECT_EQ(written(text), std::string("\0\n", 2));
}

TEST(ReportText, IntegersAtTheirLimits) {
  for (const int value : {0, 1, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    for (const unsigned width : {0U, 3U, 9U, 11U, 12U}) EXPECT_EQ(number(value, width), number_by_printf(value, width));
  }
}

TEST(ReportText, RandomIntegers) {
  CRandomDna random(4);
  for (int round = 0; round < 20000; ++round) {
    const int magnitude = random.number(0, 30);
    const int value = random.number(std::numeric_limits<int>::min(), std::numeric_limits<int>::max()) >> magnitude;
    const auto width = static_cast<unsigned>(random.number(0, 14));
    ASSERT_EQ(number(value, width), number_by_printf(value, width));
  }
}

TEST(ReportText, FractionsBetweenTwoPrintedValues) {
  for (const float value :
       {0.0F, -0.0F, 0.0625F, 0.5F, 1.5F, 2.5F, 92.857140F, 99.9995F, 99.99949F, 100.0F, -0.0001F}) {
    for (const int decimals : {2, 3}) EXPECT_EQ(fixed(value, decimals, 7), fixed_by_printf(value, decimals, 7));
  }
}

TEST(ReportText, RandomFractions) {
  CRandomDna random(5);
  for (int round = 0; round < 20000; ++round) {
    const auto matches = static_cast<float>(random.number(-100, 100000));
    const auto length = static_cast<float>(random.number(1, 100000));
    const float percent = matches / length * 100.0F;
    ASSERT_EQ(fixed(percent, 3, 7), fixed_by_printf(percent, 3, 7));
    ASSERT_EQ(fixed(percent, 2, 0), fixed_by_printf(percent, 2, 0));
    ASSERT_EQ(fixed(matches / length, 3, 7), fixed_by_printf(matches / length, 3, 7));
  }
}

TEST(ReportText, FractionsAtTheirLimits) {
  using limits = std::numeric_limits<float>;
  for (const float value : {limits::max(), limits::lowest(), limits::min(), limits::denorm_min()}) {
    EXPECT_EQ(fixed(value, 3, 7), fixed_by_printf(value, 3, 7));
  }
}

TEST(ReportText, FractionsThatAreNoNumbers) {
  using limits = std::numeric_limits<float>;
  const float nan = limits::quiet_NaN();
  for (const float value : {nan, std::copysign(nan, -1.0F), limits::infinity(), -limits::infinity()}) {
    EXPECT_EQ(fixed(value, 3, 7), fixed_by_printf(value, 3, 7));
  }
}

}  // namespace
