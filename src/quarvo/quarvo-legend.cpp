#include "quarvo-legend.h"

#include "global-types-and-parameters.h"
#include "repeat-columns.h"

void print_output_format(std::FILE* out, const char* prefix) {
  const repeat_layout layout{global_print_sat_mode, global_treat_Ns_as_missense, global_flanking != 0};
  for (const std::string& line : column_lines(layout, prefix)) std::fprintf(out, "%s\n", line.c_str());
}
