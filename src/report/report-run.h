#pragma once

// One whole run of quarvo-report. Returns the exit status; what went wrong is told on standard error. Raises
// std::bad_alloc when memory runs out.
int run_report(int argc, char** argv);
