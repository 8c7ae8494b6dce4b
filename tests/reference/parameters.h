// The settings of a run: defaults, command line, report. Written once at start-up, then only read.
#pragma once

#include <cstdio>
#include <string>

extern std::string global_input_filename;
extern std::string global_output_filename;
extern int global_sequence_from;
extern int global_sequence_to;
extern int global_search_mode;            // 0 exact, 1 extendExact, 2 imperfect
extern int global_N_and_perfection_mode;  // 0 asMismatch, 1 asNeutral, 2 asMatch
extern int global_report_unit_mode;       // 0 asIs, 1 normal form, 2 also of the reverse complement
extern int global_print_sat_seq_mode;     // 0 nothing, 1 sequence, 2 alignment
extern int global_print_sat_mode;         // 0 plain, 1 extended, 2 GFF, 3 one-per-line, 4 FASTA, 5 compact
extern bool global_sequenceInfoAsComment;
extern int global_flanking;
extern int global_maximum_recursion_depth;
extern int global_maximum_scorereduction;
extern unsigned global_min_unit_length;
extern unsigned global_max_unit_length;
extern bool global_treat_Ns_as_missense;
extern int global_Ns_allowed_in_a_row;
extern int global_min_score;
extern int global_min_score_a;
extern float global_min_score_bx;
extern int global_min_length;
extern int global_min_length_a;
extern float global_min_length_bx;
extern float global_min_perfection;
extern float global_max_perfection;
extern int global_mismatch_score;
extern int global_indel_score;
extern int global_prefer_longer_repeat;
extern bool global_remove_mostly_hidden;
extern bool global_mask_repeats;

// 0 success, -1 or -2 a rejected command line; messages go to standard error.
int read_and_init_parameters(int argc, char** argv);

// One setting a line, each line beginning with the prefix.
void print_search_parameters(FILE* out, const char* prefix);

// Writes a file name the way a formatted writer without arguments would, safely: "%%" comes out as
// "%", any other complete conversion as nothing, everything else as it stands.
void print_file_name(FILE* out, const std::string& name);
