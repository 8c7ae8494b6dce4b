// The command line, as far as reading it returns. Help, version and syntax errors end the process.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "global-types-and-parameters.h"
#include "support/default-parameters.h"

namespace {

class CommandLine : public ParameterTest {
 protected:
  bool captures = true;
  int status = 1;
  std::string complaint;  // what was written to standard error

  // Reads the command line of these words behind the program's name.
  void read(std::vector<std::string> words) {
    words.insert(words.begin(), "quarvo");
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    if (captures) ::testing::internal::CaptureStderr();
    status = read_and_init_parameters(static_cast<int>(words.size()), argv.data());
    if (captures) complaint = ::testing::internal::GetCapturedStderr();
  }

  void expect_accepted(const std::vector<std::string>& options) {
    std::vector<std::string> words = options;
    words.push_back("in.fas");
    read(words);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(complaint, "");
  }

  void expect_rejected(const std::vector<std::string>& options, int expected_status, const std::string& text) {
    std::vector<std::string> words = options;
    words.push_back("in.fas");
    read(words);
    EXPECT_EQ(status, expected_status);
    EXPECT_EQ(complaint, text);
  }
};

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

TEST_F(CommandLine, WithoutAFileNameIsRejected) {
  read({});
  EXPECT_EQ(status, -1);
  EXPECT_EQ(complaint, "Error: No input file has been specified. Type quarvo --help for more information.\n");
}

TEST_F(CommandLine, OneNameIsTheInputFile) {
  read({"in.fas"});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(global_input_filename, "in.fas");
  EXPECT_EQ(global_output_filename, "");
}

TEST_F(CommandLine, TheSecondNameIsTheResultsFile) {
  read({"in.fas", "out.txt"});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(global_input_filename, "in.fas");
  EXPECT_EQ(global_output_filename, "out.txt");
}

TEST_F(CommandLine, ThreeNamesLeaveBothEmpty) {
  read({"in.fas", "out.txt", "third"});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(complaint, "");
  EXPECT_EQ(global_input_filename, "");
  EXPECT_EQ(global_output_filename, "");
}

TEST_F(CommandLine, NamesFromAnEarlierReadingAreForgotten) {
  read({"in.fas", "out.txt"});
  read({"other.fas"});
  EXPECT_EQ(global_input_filename, "other.fas");
  EXPECT_EQ(global_output_filename, "");
}

TEST_F(CommandLine, NamesMayStandBetweenOptions) {
  read({"-s", "8", "in.fas", "--maskX", "out.txt", "-l", "3"});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(global_input_filename, "in.fas");
  EXPECT_EQ(global_output_filename, "out.txt");
  EXPECT_EQ(global_min_score, 8);
  EXPECT_EQ(global_min_length, 3);
  EXPECT_TRUE(global_mask_repeats);
}

// In a process of its own, because the parser never forgets that it has seen "--".
TEST_F(CommandLine, ANameBehindTwoDashesMayBeginWithADash) {
  const auto read_and_exit = [this] {
    captures = false;
    read({"--", "-in.fas"});
    std::exit(status == 0 && global_input_filename == "-in.fas" ? 0 : 1);
  };
  EXPECT_EXIT(read_and_exit(), ::testing::ExitedWithCode(0), "");
}

TEST_F(CommandLine, WithoutOptionsTheDefaultsStay) {
  expect_accepted({});
  EXPECT_EQ(global_search_mode, 2);
  EXPECT_EQ(global_print_sat_mode, 1);
  EXPECT_EQ(global_print_sat_seq_mode, 2);
  EXPECT_EQ(global_report_unit_mode, 2);
  EXPECT_EQ(global_prefer_longer_repeat, 1);
  EXPECT_TRUE(global_remove_mostly_hidden);
  EXPECT_EQ(global_sequence_to, -1);
  EXPECT_EQ(global_maximum_scorereduction, 2147483647);
}

TEST_F(CommandLine, ShortOptionsReachTheirParameters) {
  expect_accepted({"-N", "4",  "-f", "7",  "-R", "30", "-r", "6",  "-u", "2", "-U",
                   "50", "-l", "9",  "-s", "12", "-m", "-3", "-g", "-4", "-D"});
  EXPECT_EQ(global_Ns_allowed_in_a_row, 4);
  EXPECT_EQ(global_flanking, 7);
  EXPECT_EQ(global_maximum_scorereduction, 30);
  EXPECT_EQ(global_maximum_recursion_depth, 6);
  EXPECT_EQ(global_min_unit_length, 2U);
  EXPECT_EQ(global_max_unit_length, 50U);
  EXPECT_EQ(global_min_length, 9);
  EXPECT_EQ(global_min_score, 12);
  EXPECT_EQ(global_mismatch_score, -3);
  EXPECT_EQ(global_indel_score, -4);
  EXPECT_FALSE(global_remove_mostly_hidden);
}

TEST_F(CommandLine, LongOptionsReachTheirParameters) {
  expect_accepted({"--succN",
                   "3",
                   "--flanking",
                   "8",
                   "--maximum_score_reduction",
                   "31",
                   "--recursion",
                   "7",
                   "--minUnitLen",
                   "3",
                   "--maxUnitLen",
                   "51",
                   "--minLength",
                   "10",
                   "--minScore",
                   "13",
                   "--mismatchScore",
                   "-6",
                   "--indelScore",
                   "-7",
                   "--minLength_a",
                   "1",
                   "--minScore_a",
                   "2"});
  EXPECT_EQ(global_Ns_allowed_in_a_row, 3);
  EXPECT_EQ(global_flanking, 8);
  EXPECT_EQ(global_maximum_scorereduction, 31);
  EXPECT_EQ(global_maximum_recursion_depth, 7);
  EXPECT_EQ(global_min_unit_length, 3U);
  EXPECT_EQ(global_max_unit_length, 51U);
  EXPECT_EQ(global_min_length, 10);
  EXPECT_EQ(global_min_score, 13);
  EXPECT_EQ(global_mismatch_score, -6);
  EXPECT_EQ(global_indel_score, -7);
  EXPECT_EQ(global_min_length_a, 1);
  EXPECT_EQ(global_min_score_a, 2);
}

TEST_F(CommandLine, OptionsWithFractionsReachTheirParameters) {
  expect_accepted(
      {"--minPerfection", "70.5", "--maxPerfection", "99.5", "--minLength_b", "0.5", "--minScore_b", "1.5"});
  EXPECT_EQ(global_min_perfection, 70.5F);
  EXPECT_EQ(global_max_perfection, 99.5F);
  EXPECT_EQ(global_min_length_bx, 0.5F);
  EXPECT_EQ(global_min_score_bx, 1.5F);
}

TEST_F(CommandLine, SwitchesTurnOnWhatIsOffByDefault) {
  expect_accepted({"--sequenceInfoAsComment", "--NsAsMissense", "--maskX"});
  EXPECT_TRUE(global_sequenceInfoAsComment);
  EXPECT_TRUE(global_treat_Ns_as_missense);
  EXPECT_TRUE(global_mask_repeats);
}

TEST_F(CommandLine, DontRemoveMostlyOverlappingTurnsOverlapRemovalOff) {
  expect_accepted({"--dontRemoveMostlyOverlapping"});
  EXPECT_FALSE(global_remove_mostly_hidden);
}

TEST_F(CommandLine, PreferShorterRepeatsTurnsThePreferenceForLongerOnesOff) {
  expect_accepted({"--preferShorterRepeats"});
  EXPECT_EQ(global_prefer_longer_repeat, 0);
}

TEST_F(CommandLine, SearchModesAreWords) {
  expect_accepted({"-M", "exact"});
  EXPECT_EQ(global_search_mode, 0);
  expect_accepted({"--searchMode", "extendExact"});
  EXPECT_EQ(global_search_mode, 1);
  expect_accepted({"-M", "imperfect"});
  EXPECT_EQ(global_search_mode, 2);
}

TEST_F(CommandLine, OutputFormatsZeroToFourAreAccepted) {
  for (int format = 0; format <= 4; ++format) {
    expect_accepted({"--outputFormat", std::to_string(format)});
    EXPECT_EQ(global_print_sat_mode, format);
  }
}

TEST_F(CommandLine, OutputFormatFiveIsRejected) {
  expect_rejected({"--outputFormat", "5"}, -2, mode_complaint("An outputFormat with a value of 5"));
}

TEST_F(CommandLine, ANegativeOutputFormatIsRejected) {
  expect_rejected({"--outputFormat", "-1"}, -2, mode_complaint("An outputFormat with a value of -1"));
}

TEST_F(CommandLine, PrintRepeatSeqModeThreeIsRejected) {
  expect_rejected({"--printRepeatSeqMode", "3"}, -2, mode_complaint("A printRepeatSeqMode with a value of 3"));
}

TEST_F(CommandLine, NPerfectionModeThreeIsRejectedWithTheWordsOfReportUnit) {
  expect_rejected({"--NPerfectionMode", "3"}, -2, mode_complaint("An option value of 3 for the reportUnit option"));
}

TEST_F(CommandLine, ReportUnitThreeIsRejected) {
  expect_rejected({"--reportUnit", "3"}, -2, mode_complaint("An option value of 3 for the reportUnit option"));
}

TEST_F(CommandLine, ModesInRangeAreStored) {
  expect_accepted({"--printRepeatSeqMode", "0", "--NPerfectionMode", "2", "--reportUnit", "1"});
  EXPECT_EQ(global_print_sat_seq_mode, 0);
  EXPECT_EQ(global_N_and_perfection_mode, 2);
  EXPECT_EQ(global_report_unit_mode, 1);
}

TEST_F(CommandLine, AMinimumScoreOfOneWithAMinimumLengthOfOneIsRejected) {
  expect_rejected({"-s", "1", "-l", "1"}, -1, threshold_complaint);
}

TEST_F(CommandLine, AMinimumScoreOfOneWithAMinimumLengthOfTwoIsAccepted) { expect_accepted({"-s", "1", "-l", "2"}); }

TEST_F(CommandLine, AMinimumScoreFromOffsetAndSlopeOfTwoIsAccepted) {
  expect_accepted({"-s", "0", "--minScore_a", "1", "--minScore_b", "1"});
}

TEST_F(CommandLine, AMinimumScoreFromOffsetAndSlopeBelowTwoIsRejected) {
  expect_rejected({"-s", "0", "--minScore_a", "1", "--minScore_b", "0.99"}, -1, threshold_complaint);
}

TEST_F(CommandLine, AMismatchScoreOfMinusOneIsRejectedAndOneOfMinusTwoAccepted) {
  expect_rejected({"-m", "-1"}, -1, mismatch_complaint);
  expect_accepted({"-m", "-2"});
}

TEST_F(CommandLine, AnIndelScoreOfMinusOneIsRejectedAndOneOfMinusTwoAccepted) {
  expect_rejected({"-g", "-1"}, -1, indel_complaint);
  expect_accepted({"-g", "-2"});
}

TEST_F(CommandLine, ARecursionDepthOfZeroIsRejected) {
  expect_rejected({"-r", "0"}, -1, depth_complaint);
  expect_accepted({"-r", "1"});
}

TEST_F(CommandLine, AMaximumUnitLengthBelowTheMinimumIsRejected) {
  expect_rejected({"-u", "5", "-U", "4"}, -1, unit_length_complaint);
  expect_accepted({"-u", "4", "-U", "4"});
}

TEST_F(CommandLine, AMaximumUnitLengthAboveTenThousandIsRejected) {
  expect_rejected({"-U", "10001"}, -1, "Sorry, the maximum unit length must be smaller or equal to 10000.\n");
  expect_accepted({"-U", "10000"});
}

TEST_F(CommandLine, TheMaximumUnitLengthIsCheckedLast) {
  expect_rejected({"-u", "20002", "-U", "20001"}, -1, unit_length_complaint);
}

TEST_F(CommandLine, AMinimumUnitLengthOfZeroIsNotChecked) {
  expect_accepted({"-u", "0"});
  EXPECT_EQ(global_min_unit_length, 0U);
}

TEST_F(CommandLine, ANegativeFlankingLengthIsTakenForZero) {
  expect_accepted({"-f", "-3"});
  EXPECT_EQ(global_flanking, 0);
}

TEST_F(CommandLine, ANegativeAllowanceOfNsIsTakenForZero) {
  expect_accepted({"-N", "-1"});
  EXPECT_EQ(global_Ns_allowed_in_a_row, 0);
}

TEST_F(CommandLine, RangesAreNotChecked) {
  expect_accepted({"--firstSeq", "-5", "--lastSeq", "-9", "--minPerfection", "90", "--maxPerfection", "10"});
  EXPECT_EQ(global_sequence_from, -5);
  EXPECT_EQ(global_sequence_to, -9);
  EXPECT_EQ(global_min_perfection, 90.0F);
  EXPECT_EQ(global_max_perfection, 10.0F);
}

TEST_F(CommandLine, AMissingInputFileIsToldBeforeAWrongValue) {
  read({"--outputFormat", "9"});
  EXPECT_EQ(status, -1);
  EXPECT_EQ(complaint, "Error: No input file has been specified. Type quarvo --help for more information.\n");
}

TEST_F(CommandLine, TheFirstOfSeveralWrongValuesIsTold) {
  expect_rejected({"--reportUnit", "4", "--outputFormat", "7"}, -2,
                  mode_complaint("An outputFormat with a value of 7"));
  expect_rejected({"-g", "0", "-m", "0", "-r", "0"}, -1, mismatch_complaint);
  expect_rejected({"-U", "0", "-r", "0", "-g", "0"}, -1, indel_complaint);
}

}  // namespace
