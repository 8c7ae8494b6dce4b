#include "report-options.h"

#include <array>

report_option_values report_options;

namespace {

const std::array<convert_option_row, 2> rows{{
    {"o",
     "output",
     &report_options.output,
     "file",
     {},
     false,
     "The page to write. It appears under this name when it is complete. Default: standard output."},
    {"",
     "results",
     &report_options.results,
     "Results file",
     {},
     true,
     "The results file to read, plain or compressed by gzip, in output format 0, 1 or 3. /dev/stdin is standard "
     "input."},
}};

}  // namespace

std::span<const convert_option_row> report_option_table() { return rows; }
