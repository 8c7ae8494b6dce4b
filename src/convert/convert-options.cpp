#include "convert-options.h"

#include <algorithm>
#include <array>

convert_option_values convert_options;

namespace {

constexpr std::array<const char*, 5> formats{"bed", "gff3", "json", "tsv", "multiqc"};

const std::array<convert_option_row, 5> rows{{
    {"",
     "sample",
     &convert_options.sample,
     "name",
     {},
     false,
     "The name of the sample in a MultiQC file. Default: the name of the input file that was searched, without its "
     "directories and endings."},
    {"",
     "lengths",
     &convert_options.lengths,
     "file",
     {},
     false,
     "The lengths of the sequences, for results that do not tell them (format 3 without sequenceInfoAsComment): a file "
     "with a name, a tab and a length on each line, as samtools faidx writes. Used for densities and for sequence "
     "regions. Default: none, and what needs them is left out."},
    {"o",
     "output",
     &convert_options.output,
     "file",
     {},
     false,
     "The file to write. It appears under this name when it is complete. Default: standard output."},
    {"t", "to", &convert_options.to, "bed|gff3|json|tsv|multiqc", formats, true,
     "The format to write. bed: One line a repeat, positions from 0. gff3: Generic feature format 3. json: One JSON "
     "object a repeat, on a line of its own. tsv: Table of repeats and covered symbols by unit length, by unit and by "
     "sequence. multiqc: The same table as custom content for MultiQC, for a file whose name ends in _mqc.json."},
    {"",
     "results",
     &convert_options.results,
     "Results file",
     {},
     true,
     "The results file to read, plain or compressed by gzip, in output format 0, 1 or 3. /dev/stdin is standard "
     "input."},
}};

}  // namespace

std::span<const convert_option_row> convert_option_table() { return rows; }

std::span<const char* const> convert_format_words() { return formats; }

convert_format convert_format_of(const std::string& word) {
  return static_cast<convert_format>(std::find(formats.begin(), formats.end(), word) - formats.begin());
}
