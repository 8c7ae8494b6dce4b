#include "quarvo-legend.h"

#include "global-types-and-parameters.h"

namespace {

// The legend's lines, numbered as they come.
class CLegend {
 public:
  CLegend(std::FILE* stream, const char* line_prefix) : out(stream), prefix(line_prefix) {}

  void column(const char* meaning) { std::fprintf(out, "%sColumn %2d: %s\n", prefix, ++columns, meaning); }

 private:
  std::FILE* out;
  const char* prefix;
  int columns = 0;
};

void print_legend(std::FILE* out, const char* prefix) {
  std::fprintf(out, "%s\n%sColumns in lines of output providing repeat information:\n", prefix, prefix);
  CLegend legend(out, prefix);
  legend.column("Repeat unit length");
  legend.column("Position at which repeat starts in current sequence");
  legend.column("Position at which repeat ends in current sequence");
  legend.column("Length of repeat in original sequence, i.e. (end-start+1)");
  legend.column("Normalized repeat length, i.e. (end-start+1-insertions+deletions)");
  legend.column("Repeat score");
  legend.column("Repeat perfection");
  if (global_print_sat_mode == extended_quarvo_format) {
    legend.column("Number of mismatches");
    legend.column("Number of insertions");
    legend.column("Number of deletions");
    if (!global_treat_Ns_as_missense) legend.column("Number of N's");
  }
  legend.column("Repeat unit");
  std::fprintf(out, "%s\n", prefix);
}

void print_table_header(std::FILE* out) {
  std::fputs(
      "seq-name\tunit-length\tperfection\tstart\tend\tlength\trepeat-number\tscore\tmismatches\tinsertions\t"
      "deletions\tNs\tunit\trepeat-seq",
      out);
  if (global_flanking != 0) std::fputs("\tleft-flanking-seq\tright-flanking-seq", out);
  std::fputs("\n", out);
}

}  // namespace

void print_output_format(std::FILE* out, const char* prefix) {
  switch (global_print_sat_mode) {
    case quarvo_format:
    case extended_quarvo_format:
    case compact_format:
      print_legend(out, prefix);
      break;
    case one_per_line_format:
      print_table_header(out);
      break;
    default:
      break;
  }
}
