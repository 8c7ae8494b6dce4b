#pragma once

// Does one whole conversion for the command line. Returns the exit status; every failure has been reported on standard
// error by then.
int run_convert(int argc, char** argv);
