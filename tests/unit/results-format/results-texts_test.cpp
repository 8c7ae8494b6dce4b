// The fixed texts of the results that no golden case sees as a whole.

#include "results-texts.h"

#include <gtest/gtest.h>

namespace {

TEST(RepeatNames, AreIndexedByUnitLength) {
  EXPECT_STREQ(REPEAT_NAMES[0], "***  ERROR  ***");
  EXPECT_STREQ(REPEAT_NAMES[1], "mononucleotide");
  EXPECT_STREQ(REPEAT_NAMES[6], "hexanucleotide");
}

}  // namespace
