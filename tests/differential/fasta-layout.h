// Writes records as FASTA, plainly or in every way that a reader has to cope with.
#pragma once

#include <string>
#include <vector>

#include "random-numbers.h"

namespace differential {

struct fasta_record {
  std::string header;  // after '>'
  std::string symbols;
};

// Lines of 60 symbols.
std::string plain_fasta(const std::vector<fasta_record>& records);

// Other line ends and lengths, blanks, blank lines, comments, lower case, other letters, gaps; now and then bytes that
// make the file malformed.
std::string wild_fasta(CRandom& random, const std::vector<fasta_record>& records);

// A header as users write it, or an odd one: empty, very long, with tabs, bytes above 127, NUL bytes.
std::string random_header(CRandom& random);

}  // namespace differential
