#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "option-row.h"

// What repeats can be converted to, and what is to be settled about it.

enum convert_format : int {
  to_bed,
  to_gff3,
  to_json,
  to_table,
  to_fasta,
  to_primer3,
  to_trgt,
  to_hipstr,
  to_expansionhunter,
  to_mask,
  to_tsv,
  to_multiqc
};

// The words for the formats, in the order of their numbers.
inline constexpr std::array<option_word, 12> conversion_formats{
    {{"bed", "One line a repeat, positions from 0"},
     {"gff3", "Generic feature format 3"},
     {"json", "One JSON object a repeat, on a line of its own"},
     {"table", "One tab-separated line a repeat with all that the results tell, below a line of column names"},
     {"fasta", "The symbols of each repeat, under a name that no other repeat has"},
     {"primer3",
      "A record for primer3 for each repeat between its flanks, which the search has to show (--flanking 200)"},
     {"trgt", "Catalogue of loci for TRGT"},
     {"hipstr", "Catalogue of loci for HipSTR"},
     {"expansionhunter", "Catalogue of loci for ExpansionHunter"},
     {"mask", "The FASTA file that was searched (--fasta), its repeats masked (--mask)"},
     {"tsv", "Table of repeats and covered symbols by unit length, by unit and by sequence"},
     {"multiqc", "The same table as custom content for MultiQC, for a file whose name ends in _mqc.json"}}};

// What stands in the place of a repeat in a masked sequence.
enum mask_kind : int { mask_by_lower_case, mask_by_N, mask_by_X };
inline constexpr std::array<option_word, 3> mask_kinds{
    {{"soft", "The same symbols in lower case"}, {"N", "The letter N"}, {"X", "The letter X"}}};

struct conversion_settings {
  int to = to_bed;                // a convert_format
  bool merges = false;            // overlapping repeats become one
  bool has_more_columns = false;  // of BED
  bool has_column_names = false;  // at the head of BED
  int mask = mask_by_lower_case;  // a mask_kind
  std::string fasta;              // the file to mask
  std::string sample;             // of MultiQC; empty: from the name of the run's input file
  // The symbols of all sequences of a table of lengths, where one is given.
  std::optional<std::int64_t> symbols_in_table;
};
