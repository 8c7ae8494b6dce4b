#pragma once

#include <array>
#include <span>
#include <string_view>

// The settings at the head of a results file, a line each: prefix, label, separator, value.

enum class setting {
  input_file,
  output_file,
  sequence_range,
  search_mode,
  recursion_depth,
  score_reduction,
  min_unit_length,
  max_unit_length,
  min_score,
  min_length,
  perfection_range,
  treatment_of_Ns,
  Ns_in_a_row,
  mismatch_score,
  indel_score,
  shorter_variant,
  flanking,
  overlap_removal,
  masked_file,
  Ns_in_perfection,
  report_unit,
  output_format,
  print_mode,
  sequence_comments
};

enum class setting_presence {
  always,
  when_named,    // with a results file only
  unless_exact,  // in the searches for imperfect repeats
  in_tables      // in formats 2 and 3
};

struct setting_row {
  setting which;
  const char* label;  // with the blanks that line the values up
  setting_presence presence = setting_presence::always;
  std::span<const char* const> words = {};  // by the number of the mode; empty where the value is no word

  // The label without its colon and the blanks around it.
  constexpr std::string_view name() const {
    std::string_view text = label;
    text.remove_prefix(text.find_first_not_of(' '));
    return text.substr(0, text.rfind(':'));
  }
};

inline constexpr const char* settings_title = "Parameter settings used in this search:";
// Separates labels and values in formats 2 and 3, and in the others.
inline constexpr const char* separator_of_tables = "\t";
inline constexpr const char* separator_of_lines = " ";

// The range of sequences is "first - last".
inline constexpr const char* range_dash = " - ";
inline constexpr const char* last_sequence = "last sequence";

namespace setting_words {
inline constexpr std::array no_or_yes{"no", "yes"};
inline constexpr std::array search_mode{"exact repeats", "exact repeats which are extended to imperfect repeats",
                                        "imperfect repeats"};
inline constexpr std::array treatment_of_Ns{"neutral", "missense"};
inline constexpr std::array Ns_in_perfection{"asMismatch", "asNeutral", "asMatch"};
inline constexpr std::array report_unit{"as they are", "alphabetical normal form",
                                        "alphabetical normal form using reverse complement"};
inline constexpr std::array output_format{"quarvo format",       "extended quarvo format", "gff",
                                          "one-per-line format", "fasta format",           "old format"};
inline constexpr std::array print_mode{"don't print sequence", "print sequence", "print alignment"};
}  // namespace setting_words

// In the order of the lines, which is that of the enumeration.
inline constexpr std::array<setting_row, 24> setting_rows{{
    {setting::input_file, "Input file name:                        "},
    {setting::output_file, "Output file name:                       ", setting_presence::when_named},
    {setting::sequence_range, "   Sequence range to process:           "},
    {setting::search_mode, "   Satellites searched for:             ", setting_presence::always,
     setting_words::search_mode},
    {setting::recursion_depth, "   Recursion depth:                     ", setting_presence::unless_exact},
    {setting::score_reduction, "   Maximum score reduction:             ", setting_presence::unless_exact},
    {setting::min_unit_length, "   Minimum unit length:                 "},
    {setting::max_unit_length, "   Maximum unit length:                 "},
    {setting::min_score, "   Minimum score:                       "},
    {setting::min_length, "   Minimum length:                      "},
    {setting::perfection_range, "   Min. to max. perfection range:       "},
    {setting::treatment_of_Ns, "   Treat N's as:                        ", setting_presence::always,
     setting_words::treatment_of_Ns},
    {setting::Ns_in_a_row, "   Max. succesive N's allowed:          "},
    {setting::mismatch_score, "   Mismatch score:                      ", setting_presence::unless_exact},
    {setting::indel_score, "   Indel score:                         ", setting_presence::unless_exact},
    {setting::shorter_variant, "   Show shorter (not longer) of two repeat variants with equal score: ",
     setting_presence::always, setting_words::no_or_yes},
    {setting::flanking, "   Number of flanking nucletides:       "},
    {setting::overlap_removal, "   Remove mostly overlapping satellites:", setting_presence::always,
     setting_words::no_or_yes},
    {setting::masked_file, "   Write file with masked seq.:         ", setting_presence::always,
     setting_words::no_or_yes},
    {setting::Ns_in_perfection, "   Computing perfections treat N's:     ", setting_presence::always,
     setting_words::Ns_in_perfection},
    {setting::report_unit, "   Report units as:                     ", setting_presence::always,
     setting_words::report_unit},
    {setting::output_format, "   Output format:                       ", setting_presence::always,
     setting_words::output_format},
    {setting::print_mode, "   Print sequence mode:                 ", setting_presence::always,
     setting_words::print_mode},
    {setting::sequence_comments, "   Print seq. info as comment:          ", setting_presence::in_tables,
     setting_words::no_or_yes},
}};

constexpr const setting_row& row_of(setting which) { return setting_rows[static_cast<std::size_t>(which)]; }
