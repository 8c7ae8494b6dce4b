#pragma once

#include "results-error.h"
#include "results-records.h"

// Fills the header's other fields from its settings. Returns what is wrong with them, or no error.
results_error interpret_settings(results_header& header);
