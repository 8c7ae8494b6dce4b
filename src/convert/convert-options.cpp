#include "convert-options.h"

#include <array>

convert_option_values convert_options;

namespace {

const std::array<option_row, 10> rows{{
    {.long_name = "sample",
     .destination = &convert_options.conversion.sample,
     .label = "name",
     .summary = "The name of the sample in a MultiQC file.",
     .help = "Default: the name of the input file that was searched, without its directories and endings."},
    {.long_name = "mask",
     .destination = word_destination{&convert_options.conversion.mask},
     .words = mask_kinds,
     .summary = "What stands in the place of repeats in masked sequences (-t mask).",
     .help = "{words}. Default: {default}."},
    {.long_name = "fasta",
     .destination = &convert_options.conversion.fasta,
     .label = file_label,
     .summary = "The FASTA file that was searched, plain or compressed, for -t mask."},
    {.long_name = "header",
     .destination = &convert_options.conversion.has_column_names,
     .summary = "Begin BED with a line of column names after #."},
    {.long_name = "extra",
     .destination = &convert_options.conversion.has_more_columns,
     .summary = "Give BED three more columns: copies, purity in percent, unit length."},
    {.long_name = "merge",
     .destination = &convert_options.conversion.merges,
     .summary = "Make one of repeats that overlap: from the first start to the last end, with the unit, the score and "
                "the other values of the one that scores highest.",
     .help = "In catalogues of loci that one keeps its own ends."},
    {.long_name = "lengths",
     .destination = &convert_options.lengths,
     .label = file_label,
     .summary =
         "The lengths of the sequences, for results that do not tell them (format 3 without sequenceInfoAsComment): a "
         "file with a name, a tab and a length on each line, as samtools faidx writes.",
     .help = "Used for densities and for sequence regions. Default: none, and what needs them is left out."},
    {.short_name = "o",
     .long_name = "output",
     .destination = &convert_options.output,
     .label = file_label,
     .summary = "The file to write, compressed by BGZF where its name ends in .gz.",
     .help = "It appears under this name when it is complete. Default, or -: standard output."},
    {.short_name = "t",
     .long_name = "to",
     .destination = word_destination{&convert_options.conversion.to},
     .words = conversion_formats,
     .is_required = true,
     .summary = "The format to write.",
     .help = "{words}."},
    {.long_name = "results",
     .destination = &convert_options.results,
     .label = "Results file",
     .is_required = true,
     .may_be_dash = true,
     .most = 1,
     .complaint = "Sorry, one results file is converted at a time. Name the file to write with --output.\n",
     .summary = "The results file to read, plain or compressed by gzip, in output format 0, 1 or 3.",
     .help = "- is standard input."},
}};

}  // namespace

std::span<const option_row> convert_option_table() { return rows; }
