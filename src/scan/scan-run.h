#pragma once

// Does one whole scan for the command line. Returns the exit status; every failure has been reported on standard error
// by then.
int run_scan(int argc, char** argv);
