#ifndef QUARVO_CONVERT_RUN_H
#define QUARVO_CONVERT_RUN_H

// What quarvo-convert ends with, beside 0. The command-line library ends a run itself with 1 too.
inline constexpr int convert_status_command_line = 1;
inline constexpr int convert_status_not_read = 2;     // a file cannot be opened or read to its end
inline constexpr int convert_status_not_results = 3;  // the input is no results file of format 0, 1 or 3
inline constexpr int convert_status_unfinished = 4;   // the results have no closing line
inline constexpr int convert_status_not_suited = 5;   // names or lengths do not suit the output
inline constexpr int convert_status_not_written = 6;  // the output cannot be opened or written
inline constexpr int convert_status_out_of_memory = 7;

// Does one whole conversion for the command line. Returns the exit status; every failure has been reported on standard
// error by then.
int run_convert(int argc, char** argv);

#endif
