// The series of cases, one function for each mode of the program.
#pragma once

#include <cstdint>
#include <filesystem>

#include "campaign.h"

namespace differential {

// Every sequence over two or three symbols up to a length, under a table of settings; each file holds thousands of
// sequences as records.
case_source exhaustive_cases();

// Random sequences with planted repeats, random options.
case_source random_cases(std::uint64_t seed);

// One sequence with a change (N's, an edit, a cut, a shift) at every position in turn, each a record of the file.
case_source sweep_cases(std::uint64_t seed);

// One record of some hundred thousand symbols with repeats across the places where a search could be cut into blocks.
case_source large_cases(std::uint64_t seed);

// Files in every layout, well formed or not.
case_source layout_cases(std::uint64_t seed);

// Files of more than one block of the reader, with what is hard to read at the borders of the blocks.
case_source block_cases(std::uint64_t seed);

// Command lines that are refused, or nearly, and files that cannot be opened.
case_source refused_cases(std::uint64_t seed);

// Pieces of the *.fa files in the directory. Throws std::runtime_error if it holds none.
case_source excerpt_cases(std::uint64_t seed, const std::filesystem::path& data);

}  // namespace differential
