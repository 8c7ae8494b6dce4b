#ifndef QUARVO_REPORT_COMMAND_LINE_H
#define QUARVO_REPORT_COMMAND_LINE_H

#include <string>

// What a call of quarvo-report asks for.
struct report_request {
  std::string results_name;
  std::string page_name;  // empty: standard output
};

// Reads the argument vector. Help, version and errors end the process inside the parser, with status 0, 0 and 1.
report_request parse_report_command_line(int argc, char** argv);

#endif
