#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "default-parameters.h"
#include "quarvo-run.h"
#include "temporary-directory.h"

// The base of tests of whole runs, each in a directory of its own. `in.fas` is the input file unless the words of the
// command line say otherwise.
class RunTest : public ParameterTest {
 protected:
  CTemporaryDirectory directory;
  int status = 1;
  std::string results;   // standard output
  std::string messages;  // standard error

  void run(std::vector<std::string> words) {
    words.insert(words.begin(), "quarvo");
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    CSearchController::reset_minimum_arrays();
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    status = run_quarvo(static_cast<int>(words.size()), argv.data());
    messages = ::testing::internal::GetCapturedStderr();
    results = ::testing::internal::GetCapturedStdout();
  }

  std::string in() const { return directory.path("in.fas"); }
  std::string out() const { return directory.path("out.txt"); }

  static std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t i = text.find(part); i != std::string::npos; i = text.find(part, i + 1)) ++found;
    return found;
  }
  static bool has(const std::string& text, const std::string& part) { return count(text, part) != 0; }
  static bool ends_with(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
  }
};
