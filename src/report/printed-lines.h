#pragma once

#include <string>
#include <vector>

#include "results-records.h"

// The lines below a repeat as the results file prints them, without line ends: three of an alignment, or one of a
// sequence; flanks stand after colons. An alignment without flanks and edits is given by its sequence alone. Empty
// when the file gives neither.
std::vector<std::string> printed_lines(const results_repeat& repeat);
