#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <string>

#include "support/temporary-directory.h"

// The base of tests that run the program itself and let it meet a fault, each in a directory of its own.
//
// Commands are bash's and run in that directory, with the program under test as `quarvo`. Let the last command be
// `exec quarvo`, so that its status and the signals sent are the program's. Standard error is a pipe that holds a
// megabyte, so that no limit on files and no full disk takes the messages.
class FaultTest : public ::testing::Test {
 protected:
  CTemporaryDirectory directory;

  FaultTest();
  ~FaultTest() override;

  // Starts the command in the background. No file may grow beyond so many bytes, if that is not negative.
  void start(const std::string& command, long largest_file = -1);
  // The exit status of the command started last, or minus the number of the signal that killed it.
  int wait();
  int run(const std::string& command, long largest_file = -1);

  pid_t process_id() const { return process; }
  void send(int signal) const;
  bool is_running() const;
  // What the command started last has written to standard error by now.
  std::string messages();
  // Waits until that text is in the messages, at most two minutes.
  void wait_for_message(const std::string& text);

  // Runs the command, which must succeed, and returns what is then in the file `results`.
  std::string good_results(const std::string& command);

  std::string file(const std::string& name) const { return directory.contents(name); }
  std::string path(const std::string& name) const { return directory.path(name); }

  // In front of a command: the calls that failing-calls.cpp lists may fail.
  static constexpr const char* preload =
      "ASAN_OPTIONS=$ASAN_OPTIONS:verify_asan_link_order=0 LD_PRELOAD=" QUARVO_FAILING_CALLS " ";

 private:
  pid_t process = 0;
  int message_pipe = -1;
  std::string messages_read;

  void become(const std::string& command, long largest_file, int messages_to) const;
};

// Records r1, r2 and so on of 224 symbols, each with a repeat.
std::string records(int number);
// A record of random symbols.
std::string random_record(const std::string& name, std::size_t length);

bool has(const std::string& text, const std::string& part);
// Whether `part` is the beginning of the results `whole`, in format 0 or 1, up to the end of their head or of a record.
bool is_cut_between_records(const std::string& part, const std::string& whole);
// The results without their closing line.
std::string without_closing_line(const std::string& results);

inline constexpr const char* stop_text = "\nAnalysis has been stopped by the user.\n\n";
inline constexpr const char* good_byes = "\nAnalysis finished successfully.\n\nQuarvo says goodbye.\n\n";

// What the shell sees of a negative status.
constexpr int shell_status(int status) { return status & 255; }
std::string abort_text(int status);
