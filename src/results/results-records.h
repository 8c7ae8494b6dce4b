#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "repeat-columns.h"

// What a results file tells: the run, the sequences and their repeats. Texts are the bytes of the file; names may hold
// any byte but line ends and NUL.

// The run, from the comment lines at the head of the file.
struct results_header {
  std::string program_version;
  std::string input_file_name;   // as the program wrote it
  std::string output_file_name;  // empty: standard output
  int format = 0;                // 0, 1 or 3
  int print_mode = 0;            // below each repeat of formats 0 and 1: 0 nothing, 1 its sequence, 2 its alignment
  int flanking = 0;              // symbols given on each side of a repeat's sequence
  int report_unit_mode = 0;      // 0 as found, 1 smallest rotation, 2 also considering the reverse complement
  bool Ns_are_missense = false;
  bool has_sequence_comments = false;  // format 3 with the lines that name each sequence
  bool is_whole_input = false;         // all sequences of the input were processed
  // Every setting in the order of the file, by its label without the blanks around it and the colon after it.
  std::vector<std::pair<std::string, std::string>> settings;

  repeat_layout layout() const { return {format, Ns_are_missense, flanking != 0}; }

  // True when the file names every sequence, also those without repeats, and gives their lengths.
  bool names_every_sequence() const { return format != one_per_line_format || has_sequence_comments; }

  // True when every repeat has its symbols.
  bool tells_symbols() const { return format == one_per_line_format || print_mode != 0; }
};

// A sequence of the input, in the order of the input.
struct results_sequence {
  std::int64_t ordinal = 0;              // 1 for the first sequence that this file tells of
  std::string name;                      // the header line up to its first blank; may be empty
  std::optional<std::string> full_name;  // the header line after '>'
  std::optional<int> length;             // symbols
};

// An edit of the alignment: 'M' mismatch, 'I' insertion in the sequence, 'D' deletion from it.
struct results_edit {
  int position;  // 1-based in the repeat; edits of N's that were cut off a repeat's ends lie outside of it
  char kind;
};

// A repeat. Formats 0 and 1 give a sequence when the print mode does; format 3 always does.
struct results_repeat {
  int start = 0;            // 1-based, inclusive
  int end = 0;              // 1-based, inclusive
  int span = 0;             // sequence symbols covered: end - start + 1
  int length = 0;           // of the perfect repeat aligned to it: span - insertions + deletions
  int score = 0;            // +1 for a match outside the first unit, penalties for edits
  double perfection = 0;    // percent, three decimals; not a number when there is nothing but N's to judge by
  int unit_length = 0;      // symbols
  std::string unit;         // as reported: in the form of results_header::report_unit_mode
  std::string normal_form;  // of the unit: the smallest rotation of it and of its reverse complement
  // In single precision, as the program prints it.
  float copy_number() const { return static_cast<float>(length) / static_cast<float>(unit_length); }

  // Absent in format 0; the N's are also absent when they count as missense.
  std::optional<int> mismatches;
  std::optional<int> insertions;
  std::optional<int> deletions;
  std::optional<int> Ns;
  std::optional<std::vector<results_edit>> edits;  // format 1 only, by position

  std::optional<std::string> sequence;  // span symbols
  // With flanks: up to results_header::flanking symbols, fewer at the ends of a sequence.
  std::optional<std::string> left_flank;
  std::optional<std::string> right_flank;

  // The alignment without flanks, in lines of equal length.
  struct alignment_lines {
    std::string sequence;  // '-' for a deletion
    std::string markers;   // '|' match, '*' N, ' ' edit
    std::string unit;      // '-' for an insertion
  };
  std::optional<alignment_lines> alignment;
};
