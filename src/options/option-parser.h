#pragma once

#include <span>

#include "option-row.h"

// Reads a command line into the destinations of an option table. Help, version and syntax errors end the process inside
// the parser (status 0, 0 and 1). Raises unwritten_help when help or version cannot be written, and TCLAP::ArgException
// when two rows have one name.
void parse_options(std::span<const option_row> table, const char* description, int argc, char** argv);

// The same without a word or an end. Returns false where the parser would have ended the process.
bool parse_silently(std::span<const option_row> table, int argc, char** argv);

// For programs whose messages are free: shows words of the command line as they may be on a terminal, tells the nearest
// word where an option or one of the few values of one is misspelt, ends the process with the status given when help or
// version cannot be written, and checks all values in the order of the table. Returns false after a complaint on
// standard error.
bool read_options(std::span<const option_row> table, const char* description, int status_if_not_written, int argc,
                  char** argv);
