#include "number2cstring.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(Number2Str, WritesIntegersInDecimal) {
  EXPECT_STREQ(number2str(0), "0");
  EXPECT_STREQ(number2str(-101), "-101");
  EXPECT_STREQ(number2str(std::numeric_limits<int>::min()), "-2147483648");
  EXPECT_STREQ(number2str(std::numeric_limits<int>::max()), "2147483647");
}

TEST(Number2Str, WritesUnsignedIntegersInDecimal) { EXPECT_STREQ(number2str(4294967295U), "4294967295"); }

TEST(Number2Str, WritesAWholeFloatWithoutDecimals) {
  EXPECT_STREQ(number2str(1.0F), "1");
  EXPECT_STREQ(number2str(100.0F), "100");
}

TEST(Number2Str, WritesFloatsWithSixSignificantDigits) {
  EXPECT_STREQ(number2str(0.1F), "0.1");
  EXPECT_STREQ(number2str(33.333333F), "33.3333");
  EXPECT_STREQ(number2str(1.0e10F), "1e+10");
}

TEST(Number2Str, WritesDoublesWithSixSignificantDigits) {
  EXPECT_STREQ(number2str(0.000012345678), "1.23457e-05");
  EXPECT_STREQ(number2str(-2.5), "-2.5");
}

TEST(Number2Str, EveryCallOverwritesTheTextBefore) {
  const char* const first = number2str(1);
  const char* const second = number2str(22U);
  EXPECT_EQ(first, second);
  EXPECT_STREQ(first, "22");
}

}  // namespace
