#include "report-options.h"

#include <array>

report_option_values report_options;

namespace {

const std::array<option_row, 2> rows{{
    {.short_name = "o",
     .long_name = "output",
     .destination = &report_options.output,
     .label = file_label,
     .summary = "The page to write.",
     .help = "It appears under this name when it is complete. Default, or -: standard output."},
    {.long_name = "results",
     .destination = &report_options.results,
     .label = "Results file",
     .is_required = true,
     .may_be_dash = true,
     .most = 1,
     .complaint = "Sorry, a page is made of one results file. Name the page with --output.\n",
     .summary = "The results file to read, plain or compressed by gzip, in output format 0, 1 or 3.",
     .help = "- is standard input."},
}};

}  // namespace

std::span<const option_row> report_option_table() { return rows; }
