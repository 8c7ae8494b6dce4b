#include "companion.h"
#include "scan-run.h"

constinit const companion_program this_companion{
    "Sorry! There is not enough memory for this scan.\nPlease give it more memory, or split the longest sequences.\n",
    run_scan};
