#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "print-message.h"
#include "quarvo-version.h"
#include "results-modes.h"

// The settings of a run, process-wide. init_param and read_and_init_parameters write them; all else only reads them.

// The longest unit that the periodicity table covers.
inline constexpr unsigned largest_unit_length = 10000;

// A maximum score reduction that never stops an extension.
inline constexpr int unlimited_scorereduction = 2147483647;

extern std::string global_input_filename;
extern std::string global_output_filename;  // empty: standard output
extern int global_sequence_from;            // ordinal from 1; both ends are compared as unsigned numbers
extern int global_sequence_to;              // -1: the last sequence
extern int global_search_mode;
extern int global_N_and_perfection_mode;
extern int global_report_unit_mode;
extern int global_print_sat_seq_mode;
extern int global_print_sat_mode;
extern bool global_sequenceInfoAsComment;
extern int global_flanking;  // symbols printed on each side of a repeat
extern int global_maximum_recursion_depth;
extern int global_maximum_scorereduction;
extern unsigned global_min_unit_length;
extern unsigned global_max_unit_length;
extern bool global_treat_Ns_as_missense;
extern int global_Ns_allowed_in_a_row;
extern int global_min_score;  // minimum score: maximum(min_score, min_score_a + min_score_bx * unit length)
extern int global_min_score_a;
extern float global_min_score_bx;
extern int global_min_length;  // minimum length: the same rule
extern int global_min_length_a;
extern float global_min_length_bx;
extern float global_min_perfection;      // percent, inclusive
extern float global_max_perfection;      // percent, inclusive
extern int global_mismatch_score;        // -2 or less; a match scores +1
extern int global_indel_score;           // -2 or less
extern int global_prefer_longer_repeat;  // 0 or 1: of two ends with equal score, the farther one
extern bool global_remove_mostly_hidden;
extern bool global_mask_repeats;

// Gives every parameter but the file names its default.
void init_param();

// Sets all parameters from the command line and checks them. Returns 0, or -1 or -2 after a message on standard error.
// Help, version and syntax errors end the process inside the parser (status 0, 0 and 1); help and version that cannot
// be written raise unwritten_help.
int read_and_init_parameters(int argc, char** argv);

// What is wrong with the parameters, in lines for the user, and the status that a run ends with; 0 when nothing is.
struct parameter_complaint {
  int status = 0;
  std::string text = {};
};

// Checks the values that an option table has put into the parameters; numbers with limits may be moved to them.
parameter_complaint check_parameters();

// The plain words of a command line that the parser accepts, else none. Prints nothing. Changes the parameters, so it
// is for calls before read_and_init_parameters.
std::vector<std::string> files_named(int argc, char** argv);

// True when N's may be passed over for no score at all.
inline bool Ns_are_neutral() { return global_Ns_allowed_in_a_row > 0 && !global_treat_Ns_as_missense; }

// Writes the settings of the run, one a line, each after the prefix.
void print_search_parameters(std::FILE* out, const char* prefix);
