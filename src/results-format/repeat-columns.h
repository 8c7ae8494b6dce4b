#pragma once

#include <array>
#include <string>
#include <vector>

#include "results-modes.h"

// The columns of the repeats: of the lines of formats 0 and 1, and of the table of format 3.

enum class repeat_field {
  unit_name,
  unit_length,
  perfection,
  start,
  end,
  span,
  length,
  copy_number,
  score,
  mismatches,
  insertions,
  deletions,
  Ns,
  unit,
  symbols,
  left_flank,
  right_flank
};

enum class column_presence {
  always,
  extended,      // in format 1
  with_Ns,       // in format 1, when N's are neutral
  with_flanking  // when flanks are printed
};

// What decides which columns there are.
struct repeat_layout {
  int format;
  bool Ns_are_missense;
  bool has_flanks;

  constexpr bool is_extended() const { return format == extended_quarvo_format; }
  constexpr bool has(column_presence presence) const {
    switch (presence) {
      case column_presence::extended:
        return is_extended();
      case column_presence::with_Ns:
        return is_extended() && !Ns_are_missense;
      case column_presence::with_flanking:
        return has_flanks;
      default:
        return true;
    }
  }
};

struct repeat_column {
  repeat_field field;
  const char* title;  // in the legend, or in the header of the table
  unsigned width;     // at least, right-aligned
  const char* after;  // the text between the value and the next column
  column_presence presence = column_presence::always;
};

inline constexpr std::array<repeat_column, 12> line_columns{{
    {repeat_field::unit_name, "Repeat unit length", 0, " "},
    {repeat_field::start, "Position at which repeat starts in current sequence", 9, " : "},
    {repeat_field::end, "Position at which repeat ends in current sequence", 9, " | "},
    {repeat_field::span, "Length of repeat in original sequence, i.e. (end-start+1)", 6, " bp | "},
    {repeat_field::length, "Normalized repeat length, i.e. (end-start+1-insertions+deletions)", 6, " BP | "},
    {repeat_field::score, "Repeat score", 6, " pt | "},
    {repeat_field::perfection, "Repeat perfection", 7, " % | "},
    {repeat_field::mismatches, "Number of mismatches", 3, " mis | ", column_presence::extended},
    {repeat_field::insertions, "Number of insertions", 3, " ins | ", column_presence::extended},
    {repeat_field::deletions, "Number of deletions", 3, " del | ", column_presence::extended},
    {repeat_field::Ns, "Number of N's", 3, " N | ", column_presence::with_Ns},
    {repeat_field::unit, "Repeat unit", 0, ""},
}};

// The word in front of the unit in such a line.
constexpr const char* unit_label(const repeat_layout& layout) { return layout.is_extended() ? " unit " : "unit "; }

inline constexpr const char* name_title = "seq-name";  // of the first column, whose values may hold tabs
inline constexpr char table_separator = '\t';
inline constexpr const char* no_count = ".";  // for the N's when they are missense

// The columns of the table after that of the name.
inline constexpr std::array<repeat_column, 15> table_columns{{
    {repeat_field::unit_length, "unit-length", 0, ""},
    {repeat_field::perfection, "perfection", 0, ""},
    {repeat_field::start, "start", 0, ""},
    {repeat_field::end, "end", 0, ""},
    {repeat_field::span, "length", 0, ""},
    {repeat_field::copy_number, "repeat-number", 7, ""},
    {repeat_field::score, "score", 0, ""},
    {repeat_field::mismatches, "mismatches", 0, ""},
    {repeat_field::insertions, "insertions", 0, ""},
    {repeat_field::deletions, "deletions", 0, ""},
    {repeat_field::Ns, "Ns", 0, ""},
    {repeat_field::unit, "unit", 0, ""},
    {repeat_field::symbols, "repeat-seq", 0, ""},
    {repeat_field::left_flank, "left-flanking-seq", 0, "", column_presence::with_flanking},
    {repeat_field::right_flank, "right-flanking-seq", 0, "", column_presence::with_flanking},
}};

// The lines between the settings and the first sequence: the legend, each line after the prefix; or the header of the
// table; or none.
std::vector<std::string> column_lines(const repeat_layout& layout, const std::string& prefix);
