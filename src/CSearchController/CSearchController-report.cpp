// The block of one record in the results: opening line, repeats, closing line.

#include "CSearchController.h"
#include "global-types-and-parameters.h"

void CSearchController::print_opening_lines(std::FILE* out) {
  const int length = static_cast<int>(sequence.symbols.length);
  switch (global_print_sat_mode) {
    case quarvo_format:
    case extended_quarvo_format:
    case compact_format:
      std::fprintf(out, ">%s\nsequence length: %d\n", sequence.full_name.c_str(), length);
      break;
    case gff_format:
    case one_per_line_format:
      if (!global_sequenceInfoAsComment) break;
      std::fprintf(out, "# Full sequence name:\n#>%s\n##sequence-region %s 1 %d\n", sequence.full_name.c_str(),
                   sequence.short_name.c_str(), length);
      break;
    default:
      break;
  }
}

void CSearchController::print_closing_line(std::FILE* out) {
  static constexpr const char* format = "# Analysis of sequence \"%s\" completed.\n";
  switch (global_print_sat_mode) {
    case quarvo_format:
    case extended_quarvo_format:
    case compact_format:
      std::fprintf(out, format, sequence.full_name.c_str());
      break;
    case gff_format:
    case one_per_line_format:
      if (global_sequenceInfoAsComment) std::fprintf(out, format, sequence.short_name.c_str());
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
