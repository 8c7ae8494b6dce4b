#ifndef QUARVO_RESULTS_SETTINGS_H
#define QUARVO_RESULTS_SETTINGS_H

#include "results-records.h"
#include "results-trouble.h"

// Fills the header's other fields from its settings. Returns what is wrong with them, or no trouble.
results_trouble interpret_settings(results_header& header);

#endif
