// What a repeat offers and no command line reaches: the compact format, and the names of repeats as calls of their own.

#include "Csat-lines.h"
#include "global-types-and-parameters.h"
#include "results-texts.h"

const char* Csat::get_repeat_name() const {
  static char name[30];
  const int L = unit_length();
  if (L <= 6) return REPEAT_NAMES[static_cast<std::size_t>(L)];
  std::snprintf(name, sizeof name, "%d%s", L, repeat_name_suffix);
  return name;
}

void Csat::print_repeat_name(std::FILE* out) const {
  CReportText text;
  append_repeat_name(text, unit_length());
  text.write_to(out);
}

bool write_unused_format(std::FILE* out, const Csat& sat, int start, int end, float perfection, const char* unit) {
  if (global_print_sat_mode != compact_format) {
    std::fputs("Internal error. Unknown output format. Please report this bug", out);
    return false;
  }
  CReportText text;
  text.text(sat.get_repeat_name()).symbol(' ').number(start).text(" : ").number(end);
  text.text(" -- length ").number(sat.length()).text(" score ").number(sat.score).text(" perfection ");
  text.number(static_cast<int>(static_cast<double>(perfection) + 0.5)).text(" unit ").text(unit).symbol('\n');
  text.write_to(out);
  std::fflush(out);
  return true;
}
