// The report of the settings at the head of a run.

#include <algorithm>

#include "global-types-and-parameters.h"
#include "number2cstring.h"
#include "setting-rows.h"

namespace {

bool is_table() { return global_print_sat_mode == gff_format || global_print_sat_mode == one_per_line_format; }

bool is_reported(setting_presence presence) {
  switch (presence) {
    case setting_presence::when_named:
      return !global_output_filename.empty();
    case setting_presence::unless_exact:
      return global_search_mode != search_mode_exact;
    case setting_presence::in_tables:
      return is_table();
    default:
      return true;
  }
}

// The number of the word that is the setting's value.
int word_of(setting which) {
  switch (which) {
    case setting::search_mode:
      return global_search_mode;
    case setting::treatment_of_Ns:
      return global_treat_Ns_as_missense ? 1 : 0;
    case setting::shorter_variant:
      return global_prefer_longer_repeat == 0 ? 1 : 0;
    case setting::overlap_removal:
      return global_remove_mostly_hidden ? 1 : 0;
    case setting::masked_file:
      return global_mask_repeats ? 1 : 0;
    case setting::Ns_in_perfection:
      return global_N_and_perfection_mode;
    case setting::report_unit:
      return global_report_unit_mode;
    case setting::output_format:
      return global_print_sat_mode;
    case setting::print_mode:
      return global_print_sat_seq_mode;
    default:
      return global_sequenceInfoAsComment ? 1 : 0;
  }
}

// A number without a word has the last one, but an output format without a word leaves its line unfinished.
void print_word(std::FILE* out, const setting_row& row) {
  const auto number = static_cast<std::size_t>(word_of(row.which));
  if (number >= row.words.size() && row.which == setting::output_format) return;
  PrintMessage(out, row.words[std::min(number, row.words.size() - 1)], "\n");
}

// Each number is written before the next is turned into text: they share one buffer.
void print_range(std::FILE* out) {
  PrintMessage(out, number2str(static_cast<unsigned>(global_sequence_from)), range_dash);
  const bool is_open = global_sequence_to == -1;
  PrintMessage(out, is_open ? last_sequence : number2str(static_cast<unsigned>(global_sequence_to)), "\n");
}

// "maximum (c, a+b*unitlength )", the rule of both minimum thresholds.
void print_threshold(std::FILE* out, int constant, int offset, float slope) {
  PrintMessage(out, "maximum (", number2str(constant));
  PrintMessage(out, ", ", number2str(offset));
  PrintMessage(out, "+", number2str(slope), "*unitlength )\n");
}

void print_perfection_range(std::FILE* out) {
  PrintMessage(out, number2str(global_min_perfection), " %% - ");
  PrintMessage(out, number2str(global_max_perfection), " %%\n");
}

const char* plain_value(setting which) {
  switch (which) {
    case setting::input_file:
      return global_input_filename.c_str();
    case setting::output_file:
      return global_output_filename.c_str();
    case setting::recursion_depth:
      return number2str(global_maximum_recursion_depth);
    case setting::score_reduction:
      return global_maximum_scorereduction == unlimited_scorereduction ? "-"
                                                                       : number2str(global_maximum_scorereduction);
    case setting::min_unit_length:
      return number2str(global_min_unit_length);
    case setting::max_unit_length:
      return number2str(global_max_unit_length);
    case setting::Ns_in_a_row:
      return number2str(global_Ns_allowed_in_a_row);
    case setting::mismatch_score:
      return number2str(global_mismatch_score);
    case setting::indel_score:
      return number2str(global_indel_score);
    default:
      return number2str(global_flanking);
  }
}

void print_value(std::FILE* out, const setting_row& row) {
  if (!row.words.empty()) return print_word(out, row);
  switch (row.which) {
    case setting::sequence_range:
      return print_range(out);
    case setting::min_score:
      return print_threshold(out, global_min_score, global_min_score_a, global_min_score_bx);
    case setting::min_length:
      return print_threshold(out, global_min_length, global_min_length_a, global_min_length_bx);
    case setting::perfection_range:
      return print_perfection_range(out);
    default:
      return PrintMessage(out, plain_value(row.which), "\n");
  }
}

}  // namespace

void print_search_parameters(std::FILE* out, const char* prefix) {
  const char* const separator = is_table() ? separator_of_tables : separator_of_lines;
  PrintMessage(out, prefix, settings_title, separator, "\n");
  for (const setting_row& row : setting_rows) {
    if (!is_reported(row.presence)) continue;
    PrintMessage(out, prefix, row.label, separator);
    print_value(out, row);
  }
}
