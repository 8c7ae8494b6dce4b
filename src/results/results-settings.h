#ifndef QUARVO_RESULTS_SETTINGS_H
#define QUARVO_RESULTS_SETTINGS_H

#include "results-error.h"
#include "results-records.h"

// Fills the header's other fields from its settings. Returns what is wrong with them, or no error.
results_error interpret_settings(results_header& header);

#endif
