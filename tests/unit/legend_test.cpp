// The legend of columns and the table header.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "quarvo-legend.h"
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

TEST_F(Legend, OfTheQuarvoAndCompactFormatsHasEightColumns) {
  const std::string expected = std::string(common_columns) + "# Column  8: Repeat unit\n# \n";
  EXPECT_EQ(legend(quarvo_format), expected);
  EXPECT_EQ(legend(compact_format), expected);
}

TEST_F(Legend, OfTheExtendedFormatNumbersTheUnitTwelve) {
  EXPECT_EQ(legend(extended_quarvo_format), std::string(common_columns) +
                                                "# Column  8: Number of mismatches\n"
                                                "# Column  9: Number of insertions\n"
                                                "# Column 10: Number of deletions\n"
                                                "# Column 11: Number of N's\n"
                                                "# Column 12: Repeat unit\n# \n");
}

TEST_F(Legend, OfTheExtendedFormatWithNsAsMissenseNumbersTheUnitEleven) {
  global_treat_Ns_as_missense = true;
  EXPECT_EQ(legend(extended_quarvo_format), std::string(common_columns) +
                                                "# Column  8: Number of mismatches\n"
                                                "# Column  9: Number of insertions\n"
                                                "# Column 10: Number of deletions\n"
                                                "# Column 11: Repeat unit\n# \n");
}

TEST_F(Legend, OfGffAndFastaIsEmpty) {
  EXPECT_EQ(legend(gff_format), "");
  EXPECT_EQ(legend(fasta_format), "");
}

TEST_F(Legend, OfTheTableHasFourteenColumnsAndNoPrefix) {
  const std::string header = legend(one_per_line_format);
  EXPECT_EQ(header,
            "seq-name\tunit-length\tperfection\tstart\tend\tlength\trepeat-number\tscore\tmismatches\tinsertions\t"
            "deletions\tNs\tunit\trepeat-seq\n");
  EXPECT_EQ(std::count(header.begin(), header.end(), '\t'), 13);
}

TEST_F(Legend, OfTheTableWithFlanksHasSixteenColumns) {
  global_flanking = 1;
  const std::string header = legend(one_per_line_format);
  EXPECT_EQ(std::count(header.begin(), header.end(), '\t'), 15);
  EXPECT_NE(header.find("\trepeat-seq\tleft-flanking-seq\tright-flanking-seq\n"), std::string::npos);
}

}  // namespace
