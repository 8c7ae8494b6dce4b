#ifndef QUARVO_CONVERSION_SETTINGS_H
#define QUARVO_CONVERSION_SETTINGS_H

#include <array>
#include <string>

#include "option-row.h"

// What repeats can be converted to, and what is to be settled about it.

enum convert_format : int { to_bed, to_gff3, to_json, to_table, to_fasta, to_tsv, to_multiqc };

// The words for the formats, in the order of their numbers.
inline constexpr std::array<option_word, 7> conversion_formats{
    {{"bed", "One line a repeat, positions from 0"},
     {"gff3", "Generic feature format 3"},
     {"json", "One JSON object a repeat, on a line of its own"},
     {"table", "One tab-separated line a repeat with all that the results tell, below a line of column names"},
     {"fasta", "The symbols of each repeat, under a name that no other repeat has"},
     {"tsv", "Table of repeats and covered symbols by unit length, by unit and by sequence"},
     {"multiqc", "The same table as custom content for MultiQC, for a file whose name ends in _mqc.json"}}};

struct conversion_settings {
  int to = to_bed;     // a convert_format
  std::string sample;  // of MultiQC; empty: from the name of the run's input file
};

#endif
