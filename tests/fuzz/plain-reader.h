// What a FASTA file holds, found without blocks, states or push-back: the line ends are made equal first, and the text
// is then cut at them.
#pragma once

#include <string>
#include <vector>

struct plain_record {
  std::string full_name;
  std::string short_name;
  std::string description;  // that of an earlier record where the header has no blank
  std::string symbols;
  unsigned line = 1;  // where the next record begins, or the file ends
};

struct plain_file {
  std::vector<plain_record> records;  // the complete ones
  bool has_format_error = false;      // after these records
  unsigned error_line = 0;
};

plain_file read_plainly(const std::string& bytes);
