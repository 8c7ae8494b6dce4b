// The checks of what the command line says.

#include <gtest/gtest.h>

#include <string>

#include "support/command-line.h"

namespace {

class CommandLineChecks : public CommandLine {};

constexpr const char* threshold_complaint = "Sorry, either the minimum score or the minimum length must be larger.\n";
constexpr const char* mismatch_complaint = "Sorry, the mismatch score must be smaller or equal to -2.\n";
constexpr const char* indel_complaint = "Sorry, the indel score must be smaller or equal to -2.\n";
constexpr const char* depth_complaint =
    "Sorry, the recursion depth must be greater than 0.\nA value of 0 would corresponds to a perfect search.\n";
constexpr const char* unit_length_complaint =
    "I think you have made a mistake here: The maximum unit length must be greater\n"
    "or equal to the minimum unit length.\n";

std::string mode_complaint(const std::string& what) {
  return "Sorry, a problem occured when parsing the command line options. " + what + " is unknown.\n\n";
}

TEST_F(CommandLineChecks, OutputFormatsZeroToFourAreAccepted) {
  for (int format = 0; format <= 4; ++format) {
    expect_accepted({"--outputFormat", std::to_string(format)});
    EXPECT_EQ(global_print_sat_mode, format);
  }
}

TEST_F(CommandLineChecks, OutputFormatFiveIsRejected) {
  expect_rejected({"--outputFormat", "5"}, -2, mode_complaint("An outputFormat with a value of 5"));
}

TEST_F(CommandLineChecks, ANegativeOutputFormatIsRejected) {
  expect_rejected({"--outputFormat", "-1"}, -2, mode_complaint("An outputFormat with a value of -1"));
}

TEST_F(CommandLineChecks, PrintRepeatSeqModeThreeIsRejected) {
  expect_rejected({"--printRepeatSeqMode", "3"}, -2, mode_complaint("A printRepeatSeqMode with a value of 3"));
}

TEST_F(CommandLineChecks, NPerfectionModeThreeIsRejectedWithTheWordsOfReportUnit) {
  expect_rejected({"--NPerfectionMode", "3"}, -2, mode_complaint("An option value of 3 for the reportUnit option"));
}

TEST_F(CommandLineChecks, ReportUnitThreeIsRejected) {
  expect_rejected({"--reportUnit", "3"}, -2, mode_complaint("An option value of 3 for the reportUnit option"));
}

TEST_F(CommandLineChecks, ModesInRangeAreStored) {
  expect_accepted({"--printRepeatSeqMode", "0", "--NPerfectionMode", "2", "--reportUnit", "1"});
  EXPECT_EQ(global_print_sat_seq_mode, 0);
  EXPECT_EQ(global_N_and_perfection_mode, 2);
  EXPECT_EQ(global_report_unit_mode, 1);
}

TEST_F(CommandLineChecks, AMinimumScoreOfOneWithAMinimumLengthOfOneIsRejected) {
  expect_rejected({"-s", "1", "-l", "1"}, -1, threshold_complaint);
}

TEST_F(CommandLineChecks, AMinimumScoreOfOneWithAMinimumLengthOfTwoIsAccepted) {
  expect_accepted({"-s", "1", "-l", "2"});
}

TEST_F(CommandLineChecks, AMinimumScoreFromOffsetAndSlopeOfTwoIsAccepted) {
  expect_accepted({"-s", "0", "--minScore_a", "1", "--minScore_b", "1"});
}

TEST_F(CommandLineChecks, AMinimumScoreFromOffsetAndSlopeBelowTwoIsRejected) {
  expect_rejected({"-s", "0", "--minScore_a", "1", "--minScore_b", "0.99"}, -1, threshold_complaint);
}

TEST_F(CommandLineChecks, AMismatchScoreOfMinusOneIsRejectedAndOneOfMinusTwoAccepted) {
  expect_rejected({"-m", "-1"}, -1, mismatch_complaint);
  expect_accepted({"-m", "-2"});
}

TEST_F(CommandLineChecks, AnIndelScoreOfMinusOneIsRejectedAndOneOfMinusTwoAccepted) {
  expect_rejected({"-g", "-1"}, -1, indel_complaint);
  expect_accepted({"-g", "-2"});
}

TEST_F(CommandLineChecks, ARecursionDepthOfZeroIsRejected) {
  expect_rejected({"-r", "0"}, -1, depth_complaint);
  expect_accepted({"-r", "1"});
}

TEST_F(CommandLineChecks, AMaximumUnitLengthBelowTheMinimumIsRejected) {
  expect_rejected({"-u", "5", "-U", "4"}, -1, unit_length_complaint);
  expect_accepted({"-u", "4", "-U", "4"});
}

TEST_F(CommandLineChecks, AMaximumUnitLengthAboveTenThousandIsRejected) {
  expect_rejected({"-U", "10001"}, -1, "Sorry, the maximum unit length must be smaller or equal to 10000.\n");
  expect_accepted({"-U", "10000"});
}

TEST_F(CommandLineChecks, TheMaximumUnitLengthIsCheckedLast) {
  expect_rejected({"-u", "20002", "-U", "20001"}, -1, unit_length_complaint);
}

TEST_F(CommandLineChecks, AMinimumUnitLengthOfZeroIsNotChecked) {
  expect_accepted({"-u", "0"});
  EXPECT_EQ(global_min_unit_length, 0U);
}

TEST_F(CommandLineChecks, ANegativeFlankingLengthIsTakenForZero) {
  expect_accepted({"-f", "-3"});
  EXPECT_EQ(global_flanking, 0);
}

TEST_F(CommandLineChecks, ANegativeAllowanceOfNsIsTakenForZero) {
  expect_accepted({"-N", "-1"});
  EXPECT_EQ(global_Ns_allowed_in_a_row, 0);
}

TEST_F(CommandLineChecks, RangesAreNotChecked) {
  expect_accepted({"--firstSeq", "-5", "--lastSeq", "-9", "--minPerfection", "90", "--maxPerfection", "10"});
  EXPECT_EQ(global_sequence_from, -5);
  EXPECT_EQ(global_sequence_to, -9);
  EXPECT_EQ(global_min_perfection, 90.0F);
  EXPECT_EQ(global_max_perfection, 10.0F);
}

TEST_F(CommandLineChecks, AMissingInputFileIsToldBeforeAWrongValue) {
  read({"--outputFormat", "9"});
  EXPECT_EQ(status, -1);
  EXPECT_EQ(complaint, "Error: No input file has been specified. Type quarvo --help for more information.\n");
}

TEST_F(CommandLineChecks, TheFirstOfSeveralWrongValuesIsTold) {
  expect_rejected({"--reportUnit", "4", "--outputFormat", "7"}, -2,
                  mode_complaint("An outputFormat with a value of 7"));
  expect_rejected({"-g", "0", "-m", "0", "-r", "0"}, -1, mismatch_complaint);
  expect_rejected({"-U", "0", "-r", "0", "-g", "0"}, -1, indel_complaint);
}

}  // namespace
