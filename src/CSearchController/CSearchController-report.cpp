// The block of one record in the results: opening line, repeats, closing line.

#include "CSearchController.h"
#include "global-types-and-parameters.h"
#include "results-texts.h"

namespace {

// Whether lines of comments tell of the record.
bool has_comments() {
  return global_sequenceInfoAsComment &&
         (global_print_sat_mode == gff_format || global_print_sat_mode == one_per_line_format);
}

}  // namespace

void CSearchController::print_opening_lines(std::FILE* out) {
  const int length = static_cast<int>(sequence.symbols.length);
  if (has_blocks(global_print_sat_mode)) {
    std::fprintf(out, "%s%s\n%s%d\n", name_label, sequence.full_name.c_str(), length_label, length);
  } else if (has_comments()) {
    std::fprintf(out, "%s\n%s%s\n%s%s%s%d\n", name_comment_title, name_comment_label, sequence.full_name.c_str(),
                 region_label, sequence.short_name.c_str(), region_begin, length);
  }
}

void CSearchController::print_closing_line(std::FILE* out) {
  faststring& name = has_blocks(global_print_sat_mode) ? sequence.full_name : sequence.short_name;
  if (!has_blocks(global_print_sat_mode) && !has_comments()) return;
  std::fprintf(out, "%s\n", closing_line_of_sequence(name.c_str()).c_str());
}

void CSearchController::report_SATList(std::FILE* out, const std::list<Csat*>& list) {
  print_opening_lines(out);
  for (const Csat* sat : list) sat->report_sat(out, sequence);
  print_closing_line(out);
  std::fflush(out);
}
