#pragma once

// The modes of a run, by the numbers of the command line and of the tables of words.

enum search_mode_type : int { search_mode_exact = 0, search_mode_extend_exact = 1, search_mode_imperfect = 2 };
enum N_and_perfection_mode_type : int { Ns_as_mismatch = 0, Ns_as_neutral = 1, Ns_as_match = 2 };
enum report_unit_mode_type : int { unit_as_is = 0, unit_normal_form = 1, unit_normal_form_with_complement = 2 };
enum print_sat_seq_mode_type : int { print_no_sequence = 0, print_sequence = 1, print_alignment = 2 };
enum print_sat_mode_type : int {
  quarvo_format = 0,
  extended_quarvo_format = 1,
  gff_format = 2,
  one_per_line_format = 3,
  fasta_format = 4,
  compact_format = 5  // for diagnosis; the command line does not accept it
};

// Whether results in the format have a legend, and a line in front of and after the repeats of each record.
constexpr bool has_blocks(int format) {
  return format == quarvo_format || format == extended_quarvo_format || format == compact_format;
}
