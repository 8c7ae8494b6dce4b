// The legend of columns. Those of the formats that can be chosen stand in the results of tests/cli.

#include "quarvo-legend.h"

#include <gtest/gtest.h>

#include <string>

#include "support/default-parameters.h"
#include "support/stream-text.h"

namespace {

class Legend : public ParameterTest {
 protected:
  static std::string legend(int format) {
    global_print_sat_mode = format;
    return text_of([](std::FILE* out) { print_output_format(out, "# "); });
  }
};

constexpr const char* common_columns =
    "# \n"
    "# Columns in lines of output providing repeat information:\n"
    "# Column  1: Repeat unit length\n"
    "# Column  2: Position at which repeat starts in current sequence\n"
    "# Column  3: Position at which repeat ends in current sequence\n"
    "# Column  4: Length of repeat in original sequence, i.e. (end-start+1)\n"
    "# Column  5: Normalized repeat length, i.e. (end-start+1-insertions+deletions)\n"
    "# Column  6: Repeat score\n"
    "# Column  7: Repeat perfection\n";

TEST_F(Legend, OfTheCompactFormatHasEightColumns) {
  EXPECT_EQ(legend(compact_format), std::string(common_columns) + "# Column  8: Repeat unit\n# \n");
}

}  // namespace
