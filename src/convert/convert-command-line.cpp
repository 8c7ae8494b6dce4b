// The command line of quarvo-convert: from the argument vector to convert_options.

#include <cstdio>

#include "convert-options.h"
#include "convert-run.h"
#include "option-parser.h"

int read_convert_options(int argc, char** argv) {
  parse_options(convert_option_table(), convert_description, convert_status_not_written, argc, argv);
  if (convert_options.results.size() == 1) return 0;
  std::fputs("Sorry, one results file is converted at a time. Name the file to write with --output.\n", stderr);
  return convert_status_command_line;
}
