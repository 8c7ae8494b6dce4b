#pragma once

#include "results-error.h"

// A program beside quarvo that reads its results.
struct companion_program {
  const char* out_of_memory_message;
  int (*run)(int argc, char** argv);  // returns the exit status; may raise std::bad_alloc
};

// What the common main runs; each program defines its own.
extern const companion_program this_companion;

// What companions end with, beside 0. The command-line library ends a run itself with `command_line` too.
namespace companion_status {
inline constexpr int command_line = 1;
inline constexpr int not_read = 2;     // a file cannot be opened or read to its end
inline constexpr int not_results = 3;  // the input is no results file of format 0, 1 or 3
inline constexpr int unfinished = 4;   // the results have no closing line
inline constexpr int not_suited = 5;   // names or lengths do not suit the output
inline constexpr int not_written = 6;  // the output cannot be opened or written
inline constexpr int out_of_memory = 7;
inline constexpr int not_fasta = 8;  // the input is no FASTA, or has no sequence of the name asked for

int of(const results_error& error);
}  // namespace companion_status
