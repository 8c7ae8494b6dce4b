#pragma once

#include <tclap/CmdLine.h>

#include <iostream>

#include "COutputFile.h"

// Help or version that could not be written to standard output; the message has been given.
struct unwritten_help {};

// What the command-line library prints by itself. Help and version that are not written raise unwritten_help, or end
// the process as other filters do where standard output is a closed pipe.
class CCommandLineOutput : public TCLAP::StdOutput {
 public:
  void usage(TCLAP::CmdLineInterface& command_line) override {
    write([&] { TCLAP::StdOutput::usage(command_line); });
  }
  void version(TCLAP::CmdLineInterface& command_line) override {
    write([&] { TCLAP::StdOutput::version(command_line); });
  }

 private:
  template <typename Text>
  static void write(Text text) {
    COutputFile out("as output file.");
    out.claim_standard_output();
    text();
    if (const bool is_written = out.close(); is_written && std::cout.good()) return;
    out.report_write_failure();
    throw unwritten_help();
  }
};
