#ifndef QUARVO_REPORT_RUN_H
#define QUARVO_REPORT_RUN_H

// What quarvo-report ends with, beside 0; the same as for quarvo-convert. The command-line library ends a run itself
// with 1 too.
inline constexpr int report_status_command_line = 1;
inline constexpr int report_status_not_read = 2;     // the results cannot be opened or read to their end
inline constexpr int report_status_not_results = 3;  // the input is no results file of format 0, 1 or 3
inline constexpr int report_status_unfinished = 4;   // the results have no closing line
inline constexpr int report_status_not_written = 6;  // the page cannot be opened or written
inline constexpr int report_status_out_of_memory = 7;

// One whole run of quarvo-report. Returns the exit status; what went wrong is told on standard error. Raises
// std::bad_alloc when memory runs out.
int run_report(int argc, char** argv);

#endif
