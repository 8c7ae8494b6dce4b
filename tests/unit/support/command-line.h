#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "default-parameters.h"
#include "global-types-and-parameters.h"

// The base of tests that read a command line.
class CommandLine : public ParameterTest {
 protected:
  bool captures = true;
  int status = 1;
  std::string complaint;  // what was written to standard error

  // Reads the command line of these words after the program's name.
  void read(std::vector<std::string> words) {
    words.insert(words.begin(), "quarvo");
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    if (captures) ::testing::internal::CaptureStderr();
    status = read_and_init_parameters(static_cast<int>(words.size()), argv.data());
    if (captures) complaint = ::testing::internal::GetCapturedStderr();
  }

  void expect_accepted(const std::vector<std::string>& options) {
    std::vector<std::string> words = options;
    words.push_back("in.fas");
    read(words);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(complaint, "");
  }

  void expect_rejected(const std::vector<std::string>& options, int expected_status, const std::string& text) {
    std::vector<std::string> words = options;
    words.push_back("in.fas");
    read(words);
    EXPECT_EQ(status, expected_status);
    EXPECT_EQ(complaint, text);
  }
};
