#ifndef QUARVO_OPTION_PARSER_H
#define QUARVO_OPTION_PARSER_H

#include <span>

#include "option-row.h"

// Reads a command line into the destinations of an option table. Help, version and syntax errors end the process inside
// the parser (status 0, 0 and 1).
void parse_options(std::span<const convert_option_row> table, const char* description, int argc, char** argv);

#endif
