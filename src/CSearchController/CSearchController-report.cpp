// The block of one record in the results: opening line, repeats, closing line.

#include "CSearchController.h"
#include "global-types-and-parameters.h"
#include "results-texts.h"

void CSearchController::print_opening_lines(std::FILE* out) {
  const int length = static_cast<int>(sequence.symbols.length);
  switch (global_print_sat_mode) {
    case quarvo_format:
    case extended_quarvo_format:
    case compact_format:
      std::fprintf(out, "%s%s\n%s%d\n", name_label, sequence.full_name.c_str(), length_label, length);
      break;
    case gff_format:
    case one_per_line_format:
      if (!global_sequenceInfoAsComment) break;
      std::fprintf(out, "%s\n%s%s\n%s%s%s%d\n", name_comment_title, name_comment_label, sequence.full_name.c_str(),
                   region_label, sequence.short_name.c_str(), region_begin, length);
      break;
    default:
      break;
  }
}

void CSearchController::print_closing_line(std::FILE* out) {
  switch (global_print_sat_mode) {
    case quarvo_format:
    case extended_quarvo_format:
    case compact_format:
      std::fprintf(out, "%s\n", closing_line_of_sequence(sequence.full_name.c_str()).c_str());
      break;
    case gff_format:
    case one_per_line_format:
      if (!global_sequenceInfoAsComment) break;
      std::fprintf(out, "%s\n", closing_line_of_sequence(sequence.short_name.c_str()).c_str());
      break;
    default:
      break;
  }
}

void CSearchController::report_SATList(std::FILE* out, const std::list<Csat*>& list) {
  print_opening_lines(out);
  for (const Csat* sat : list) sat->report_sat(out, sequence);
  print_closing_line(out);
  std::fflush(out);
}
