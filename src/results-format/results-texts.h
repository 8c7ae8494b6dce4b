#pragma once

#include <array>
#include <string>
#include <string_view>

#include "results-modes.h"

// The fixed texts of a results file, without the ends of their lines.

// In front of every line of the head, but of no line of the table of format 3.
inline constexpr const char* comment_prefix = "# ";

inline constexpr const char* creator_title = "Results computed with:";
inline constexpr const char* creator_version = "   Quarvo, version ";

// The lines before the repeats of a sequence: in formats 0 and 1, and as comments in formats 2 and 3.
inline constexpr const char* name_label = ">";
inline constexpr const char* length_label = "sequence length: ";
inline constexpr const char* name_comment_title = "# Full sequence name:";
inline constexpr const char* name_comment_label = "#>";
inline constexpr const char* region_label = "##sequence-region ";
inline constexpr const char* region_begin = " 1 ";  // between the name and the length

// The line after the repeats of a sequence.
inline std::string closing_line_of_sequence(std::string_view name) {
  return "# Analysis of sequence \"" + std::string(name) + "\" completed.";
}

// The last line of a whole file; empty when the format has none.
constexpr const char* closing_line_of_run(int format) {
  switch (format) {
    case fasta_format:
      return "";
    case gff_format:
      return "# End tandem repeats";
    default:
      return "## Finished successfully. ##";
  }
}

// The names of repeats by unit length, 1 to 6; longer ones are named by number and suffix.
inline constexpr std::array<const char*, 7> REPEAT_NAMES{"***  ERROR  ***", "mononucleotide",  "dinucleotide",
                                                         "trinucleotide",   "tetranucleotide", "pentanucleotide",
                                                         "hexanucleotide"};
inline constexpr const char* repeat_name_suffix = "-nucleotide";

// The line of edits: the label, and for each edit "(position,kind),".
inline constexpr const char* edits_label = "Missense: ";
inline constexpr char mismatch_kind = 'M';
inline constexpr char insertion_kind = 'I';
inline constexpr char deletion_kind = 'D';

// The symbols of an alignment, and what frames a repeat between its flanks.
inline constexpr char match_mark = '|';
inline constexpr char N_mark = '*';
inline constexpr char edit_mark = ' ';
inline constexpr char gap_mark = '-';
inline constexpr char flank_mark = ':';
