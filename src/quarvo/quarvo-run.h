#pragma once

class CShortcuts;

// What a run ends with: 0, or one of these, or what read_and_init_parameters returned.
inline constexpr int status_malformed_input = -25;
inline constexpr int status_input_not_opened = -101;
inline constexpr int status_output_not_opened = -102;
inline constexpr int status_masked_not_opened = -103;
inline constexpr int status_write_failed = -104;
inline constexpr int status_record_too_long = -105;
inline constexpr int status_out_of_memory = -106;
inline constexpr int status_read_failed = -107;

// Does one whole run for the command line: reads the parameters, opens the files, searches and reports record by
// record, by the shortcuts if there are any. Returns the exit status; every failure has been reported on standard error
// by then.
int run_quarvo(int argc, char** argv, CShortcuts* shortcuts = nullptr);
