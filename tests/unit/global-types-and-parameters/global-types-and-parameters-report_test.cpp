// The report of the settings. Those of single settings stand in tests/cli.

#include <gtest/gtest.h>

#include <string>

#include "global-types-and-parameters.h"
#include "support/default-parameters.h"
#include "support/stream-text.h"

namespace {

class ParameterReport : public ParameterTest {
 protected:
  static std::string report(const char* prefix = "") {
    return text_of([prefix](std::FILE* out) { print_search_parameters(out, prefix); });
  }
  static bool has(const std::string& part) { return report().find(part) != std::string::npos; }
};

TEST_F(ParameterReport, OfOtherSettings) {
  global_input_filename = std::string("a.fas");
  global_output_filename = std::string("b.txt");
  global_sequence_from = 3;
  global_sequence_to = 5;
  global_search_mode = search_mode_extend_exact;
  global_maximum_recursion_depth = 7;
  global_maximum_scorereduction = 30;
  global_min_unit_length = 2;
  global_max_unit_length = 100;
  global_min_score = 12;
  global_min_score_a = -3;
  global_min_score_bx = 1.25F;
  global_min_length = 20;
  global_min_length_a = 4;
  global_min_length_bx = -0.5F;
  global_min_perfection = 70.5F;
  global_max_perfection = 99.25F;
  global_treat_Ns_as_missense = true;
  global_Ns_allowed_in_a_row = 9;
  global_mismatch_score = -6;
  global_indel_score = -7;
  global_prefer_longer_repeat = 0;
  global_flanking = 15;
  global_remove_mostly_hidden = false;
  global_mask_repeats = true;
  global_N_and_perfection_mode = Ns_as_neutral;
  global_report_unit_mode = unit_as_is;
  global_print_sat_mode = quarvo_format;
  global_print_sat_seq_mode = print_no_sequence;
  EXPECT_EQ(report(),
            "Parameter settings used in this search: \n"
            "Input file name:                         a.fas\n"
            "Output file name:                        b.txt\n"
            "   Sequence range to process:            3 - 5\n"
            "   Satellites searched for:              exact repeats which are extended to imperfect repeats\n"
            "   Recursion depth:                      7\n"
            "   Maximum score reduction:              30\n"
            "   Minimum unit length:                  2\n"
            "   Maximum unit length:                  100\n"
            "   Minimum score:                        maximum (12, -3+1.25*unitlength )\n"
            "   Minimum length:                       maximum (20, 4+-0.5*unitlength )\n"
            "   Min. to max. perfection range:        70.5 % - 99.25 %\n"
            "   Treat N's as:                         missense\n"
            "   Max. succesive N's allowed:           9\n"
            "   Mismatch score:                       -6\n"
            "   Indel score:                          -7\n"
            "   Show shorter (not longer) of two repeat variants with equal score:  yes\n"
            "   Number of flanking nucletides:        15\n"
            "   Remove mostly overlapping satellites: no\n"
            "   Write file with masked seq.:          yes\n"
            "   Computing perfections treat N's:      asNeutral\n"
            "   Report units as:                      as they are\n"
            "   Output format:                        quarvo format\n"
            "   Print sequence mode:                  don't print sequence\n");
}

TEST_F(ParameterReport, PrintsNegativeRangeEndsAsUnsignedNumbers) {
  global_sequence_from = -5;
  EXPECT_TRUE(has("   Sequence range to process:            4294967291 - last sequence\n"));
  global_sequence_to = -2;
  EXPECT_TRUE(has("   Sequence range to process:            4294967291 - 4294967294\n"));
}

TEST_F(ParameterReport, NamesTheCompactFormat) {
  global_print_sat_mode = compact_format;
  EXPECT_TRUE(has("   Output format:                        old format\n   Print sequence mode:"));
}

TEST_F(ParameterReport, LeavesTheLineOfAnUnknownOutputFormatUnfinished) {
  global_print_sat_mode = 6;
  EXPECT_TRUE(
      has("   Output format:                           Print sequence mode:                  print alignment\n"));
}

}  // namespace
