// The report of the settings at the head of a run.

#include "global-types-and-parameters.h"
#include "number2cstring.h"

namespace {

const char* yes_or_no(bool value) { return value ? "yes" : "no"; }

const char* search_mode_text() {
  switch (global_search_mode) {
    case search_mode_exact:
      return "exact repeats";
    case search_mode_extend_exact:
      return "exact repeats which are extended to imperfect repeats";
    default:
      return "imperfect repeats";
  }
}

const char* N_perfection_mode_text() {
  switch (global_N_and_perfection_mode) {
    case Ns_as_mismatch:
      return "asMismatch";
    case Ns_as_neutral:
      return "asNeutral";
    default:
      return "asMatch";
  }
}

const char* report_unit_mode_text() {
  switch (global_report_unit_mode) {
    case unit_as_is:
      return "as they are";
    case unit_normal_form:
      return "alphabetical normal form";
    default:
      return "alphabetical normal form using reverse complement";
  }
}

const char* print_sat_seq_mode_text() {
  switch (global_print_sat_seq_mode) {
    case print_no_sequence:
      return "don't print sequence";
    case print_sequence:
      return "print sequence";
    default:
      return "print alignment";
  }
}

// Writes the lines of the report: prefix, label, separator, value, line end.
class CReport {
 public:
  CReport(std::FILE* stream, const char* line_prefix)
      : out(stream),
        prefix(line_prefix),
        separator(global_print_sat_mode == gff_format || global_print_sat_mode == one_per_line_format ? "\t" : " ") {}

  void begin_line(const char* label) { PrintMessage(out, prefix, label, separator); }
  void value(const char* text) { PrintMessage(out, text); }
  void line(const char* label, const char* text) {
    begin_line(label);
    PrintMessage(out, text, "\n");
  }

  // "maximum (c, a+b*unitlength )", the rule of both minimum thresholds.
  void threshold_line(const char* label, int constant, int offset, float slope) {
    begin_line(label);
    value("maximum (");
    value(number2str(constant));
    value(", ");
    value(number2str(offset));
    value("+");
    value(number2str(slope));
    value("*unitlength )\n");
  }

 private:
  std::FILE* out;
  const char* prefix;
  const char* separator;
};

void report_files_and_range(CReport& report) {
  report.line("Input file name:                        ", global_input_filename.c_str());
  if (!global_output_filename.empty()) {
    report.line("Output file name:                       ", global_output_filename.c_str());
  }
  report.begin_line("   Sequence range to process:           ");
  report.value(number2str(static_cast<unsigned>(global_sequence_from)));
  report.value(" - ");
  report.value(global_sequence_to == -1 ? "last sequence" : number2str(static_cast<unsigned>(global_sequence_to)));
  report.value("\n");
}

void report_search(CReport& report) {
  report.line("   Satellites searched for:             ", search_mode_text());
  if (global_search_mode != search_mode_exact) {
    report.line("   Recursion depth:                     ", number2str(global_maximum_recursion_depth));
    report.line("   Maximum score reduction:             ", global_maximum_scorereduction == unlimited_scorereduction
                                                                ? "-"
                                                                : number2str(global_maximum_scorereduction));
  }
  report.line("   Minimum unit length:                 ", number2str(global_min_unit_length));
  report.line("   Maximum unit length:                 ", number2str(global_max_unit_length));
}

void report_thresholds(CReport& report) {
  report.threshold_line("   Minimum score:                       ", global_min_score, global_min_score_a,
                        global_min_score_bx);
  report.threshold_line("   Minimum length:                      ", global_min_length, global_min_length_a,
                        global_min_length_bx);
  report.begin_line("   Min. to max. perfection range:       ");
  report.value(number2str(global_min_perfection));
  report.value(" %% - ");
  report.value(number2str(global_max_perfection));
  report.value(" %%\n");
}

void report_scoring(CReport& report) {
  report.line("   Treat N's as:                        ", global_treat_Ns_as_missense ? "missense" : "neutral");
  report.line("   Max. succesive N's allowed:          ", number2str(global_Ns_allowed_in_a_row));
  if (global_search_mode != search_mode_exact) {
    report.line("   Mismatch score:                      ", number2str(global_mismatch_score));
    report.line("   Indel score:                         ", number2str(global_indel_score));
  }
  report.line("   Show shorter (not longer) of two repeat variants with equal score: ",
              yes_or_no(global_prefer_longer_repeat == 0));
}

void report_output_format(CReport& report) {
  static constexpr const char* formats[] = {"quarvo format",       "extended quarvo format", "gff",
                                            "one-per-line format", "fasta format",           "old format"};
  report.begin_line("   Output format:                       ");
  if (global_print_sat_mode > compact_format) return;
  report.value(formats[global_print_sat_mode]);
  report.value("\n");
}

void report_output(CReport& report) {
  report.line("   Number of flanking nucletides:       ", number2str(global_flanking));
  report.line("   Remove mostly overlapping satellites:", yes_or_no(global_remove_mostly_hidden));
  report.line("   Write file with masked seq.:         ", yes_or_no(global_mask_repeats));
  report.line("   Computing perfections treat N's:     ", N_perfection_mode_text());
  report.line("   Report units as:                     ", report_unit_mode_text());
  report_output_format(report);
  report.line("   Print sequence mode:                 ", print_sat_seq_mode_text());
  if (global_print_sat_mode == gff_format || global_print_sat_mode == one_per_line_format) {
    report.line("   Print seq. info as comment:          ", yes_or_no(global_sequenceInfoAsComment));
  }
}

}  // namespace

void print_search_parameters(std::FILE* out, const char* prefix) {
  CReport report(out, prefix);
  report.line("Parameter settings used in this search:", "");
  report_files_and_range(report);
  report_search(report);
  report_thresholds(report);
  report_scoring(report);
  report_output(report);
}
