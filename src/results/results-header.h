#pragma once

#include "CLineReader.h"
#include "results-error.h"
#include "results-records.h"

// Reads the comment lines at the head of a results file, up to and including the legend or the table's header.
// Returns what is wrong with them, or no error.
results_error read_results_header(CLineReader& lines, results_header& header);

// What is wrong when `lines` stands at a line that is not what it should be: its number, what was expected, advice.
results_error unexpected_line(const CLineReader& lines, const std::string& expected);

// What is wrong when `lines` stands at the end of a file whose closing line has not come.
results_error unexpected_end(const CLineReader& lines);

// What is wrong when the system fails to read on.
results_error read_failure(const CLineReader& lines);
