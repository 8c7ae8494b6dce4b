#include "companion.h"
#include "convert-run.h"

constinit const companion_program this_companion{"Sorry! There is not enough memory for this conversion.\n",
                                                 run_convert};
