// The parameters and their defaults.

#include "global-types-and-parameters.h"

#include <gtest/gtest.h>

#include "support/default-parameters.h"

namespace {

class ParameterDefaults : public ParameterTest {};

TEST_F(ParameterDefaults, WithoutOptionsTheModesAreImperfectExtendedAlignmentAndNormalFormWithComplement) {
  EXPECT_EQ(global_search_mode, 2);
  EXPECT_EQ(global_print_sat_mode, 1);
  EXPECT_EQ(global_print_sat_seq_mode, 2);
  EXPECT_EQ(global_report_unit_mode, 2);
  EXPECT_EQ(global_N_and_perfection_mode, 0);
}

TEST_F(ParameterDefaults, FilesAndRange) {
  EXPECT_EQ(global_input_filename, "");
  EXPECT_EQ(global_output_filename, "");
  EXPECT_EQ(global_sequence_from, 1);
  EXPECT_EQ(global_sequence_to, -1);
}

TEST_F(ParameterDefaults, Search) {
  EXPECT_EQ(global_maximum_recursion_depth, 5);
  EXPECT_EQ(global_maximum_scorereduction, 2147483647);
  EXPECT_EQ(global_min_unit_length, 1U);
  EXPECT_EQ(global_max_unit_length, 10U);
  EXPECT_FALSE(global_treat_Ns_as_missense);
  EXPECT_EQ(global_Ns_allowed_in_a_row, 2);
  EXPECT_EQ(global_mismatch_score, -5);
  EXPECT_EQ(global_indel_score, -5);
  EXPECT_EQ(global_prefer_longer_repeat, 1);
  EXPECT_TRUE(global_remove_mostly_hidden);
}

TEST_F(ParameterDefaults, Thresholds) {
  EXPECT_EQ(global_min_score, 6);
  EXPECT_EQ(global_min_score_a, 0);
  EXPECT_EQ(global_min_score_bx, 1.0F);
  EXPECT_EQ(global_min_length, 0);
  EXPECT_EQ(global_min_length_a, 0);
  EXPECT_EQ(global_min_length_bx, 0.0F);
  EXPECT_EQ(global_min_perfection, 0.0F);
  EXPECT_EQ(global_max_perfection, 100.0F);
}

TEST_F(ParameterDefaults, Output) {
  EXPECT_FALSE(global_sequenceInfoAsComment);
  EXPECT_EQ(global_flanking, 0);
  EXPECT_FALSE(global_mask_repeats);
}

TEST_F(ParameterDefaults, InitParamRestoresThemAndLeavesTheFileNames) {
  global_input_filename = "in.fas";
  global_output_filename = "out.txt";
  global_min_score = 77;
  global_mask_repeats = true;
  global_maximum_scorereduction = 3;
  init_param();
  EXPECT_EQ(global_min_score, 6);
  EXPECT_FALSE(global_mask_repeats);
  EXPECT_EQ(global_maximum_scorereduction, 2147483647);
  EXPECT_EQ(global_input_filename, "in.fas");
  EXPECT_EQ(global_output_filename, "out.txt");
}

TEST_F(ParameterDefaults, NsAreNeutralUnlessTheyAreMissenseOrNoneIsAllowed) {
  EXPECT_TRUE(Ns_are_neutral());
  global_treat_Ns_as_missense = true;
  EXPECT_FALSE(Ns_are_neutral());
  global_treat_Ns_as_missense = false;
  global_Ns_allowed_in_a_row = 0;
  EXPECT_FALSE(Ns_are_neutral());
}

}  // namespace
