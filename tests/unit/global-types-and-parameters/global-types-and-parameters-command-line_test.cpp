// The command line, as far as reading it returns. Help, version and syntax errors end the process.

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/command-line.h"

namespace {

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

}  // namespace
