#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "results-records.h"

// Names of sequences as other programs take them.

// The name up to its first white space: what other programs read from the same header line. Results cut names at
// blanks only.
std::string_view plain_name(std::string_view name);

// The name in the first column of GFF3: bytes that may not stand there are written as %XX.
std::string gff3_name(std::string_view name);

// Whether a line of BED may begin with the name: it is not empty, and no program takes the line for a comment or a
// header line.
bool is_bed_name(std::string_view name);

// Why a sequence cannot be told in a format, or not together with another one; lines for the user.
std::string unsuited_name(const results_sequence& sequence, const std::string& format);
std::string repeated_name(const results_sequence& sequence);

// Notices names that come twice, by a hash of 64 bits each.
class CNameRegister {
 public:
  // Returns false when the name was there before.
  bool add(std::string_view name);

 private:
  std::unordered_set<std::uint64_t> seen;
};
