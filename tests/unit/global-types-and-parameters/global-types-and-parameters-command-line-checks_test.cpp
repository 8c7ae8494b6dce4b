// The checks of what the command line says: what they accept, and their order. Each refusal stands in tests/cli.

#include <gtest/gtest.h>

#include <string>

#include "support/command-line.h"

namespace {

class CommandLineChecks : public CommandLine {};

constexpr const char* mismatch_complaint = "Sorry, the mismatch score must be smaller or equal to -2.\n";
constexpr const char* indel_complaint = "Sorry, the indel score must be smaller or equal to -2.\n";
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

TEST_F(CommandLineChecks, ModesInRangeAreStored) {
  expect_accepted({"--printRepeatSeqMode", "0", "--NPerfectionMode", "2", "--reportUnit", "1"});
  EXPECT_EQ(global_print_sat_seq_mode, 0);
  EXPECT_EQ(global_N_and_perfection_mode, 2);
  EXPECT_EQ(global_report_unit_mode, 1);
}

TEST_F(CommandLineChecks, TheMaximumUnitLengthIsCheckedLast) {
  expect_rejected({"-u", "20002", "-U", "20001"}, -1, unit_length_complaint);
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
