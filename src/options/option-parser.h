#ifndef QUARVO_OPTION_PARSER_H
#define QUARVO_OPTION_PARSER_H

#include <span>

#include "option-row.h"

// Reads a command line into the destinations of an option table. Help, version and syntax errors end the process inside
// the parser (status 0, 0 and 1), or with the status given when help or version cannot be written.
void parse_options(std::span<const convert_option_row> table, const char* description, int status_if_not_written,
                   int argc, char** argv);

#endif
