#include "companion.h"
#include "report-run.h"

constinit const companion_program this_companion{"Sorry! There is not enough memory for this report.\n", run_report};
