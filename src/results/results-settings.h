#ifndef QUARVO_RESULTS_SETTINGS_H
#define QUARVO_RESULTS_SETTINGS_H

#include <string>
#include <vector>

#include "results-records.h"
#include "results-trouble.h"

// Fills the header's other fields from its settings. Returns what is wrong with them, or no trouble.
results_trouble interpret_settings(results_header& header);

// The lines between the settings and the results: the legend of formats 0 and 1, the table header of format 3.
std::vector<std::string> lines_behind_settings(const results_header& header);

#endif
