#pragma once

#include <string>
#include <utility>
#include <vector>

#include "CResultsReader.h"
#include "support/run.h"

// Everything that a results file gives, and how the reading ended.
struct whole_results {
  struct block {
    results_sequence sequence;
    std::vector<results_repeat> repeats;
  };

  results_header header;
  std::vector<block> blocks;
  results_error error;
  std::string text;  // of the error

  std::size_t repeat_count() const {
    std::size_t count = 0;
    for (const block& each : blocks) count += each.repeats.size();
    return count;
  }
};

inline whole_results read_results(const std::string& name) {
  CResultsReader reader;
  whole_results whole;
  CResultsReader::item item = reader.open(name) ? reader.next() : CResultsReader::item::failed;
  for (; item != CResultsReader::item::end && item != CResultsReader::item::failed; item = reader.next()) {
    if (item == CResultsReader::item::sequence) {
      whole.blocks.push_back({reader.sequence(), {}});
    } else {
      whole.blocks.back().repeats.push_back(reader.repeat());
    }
  }
  EXPECT_EQ(item == CResultsReader::item::failed, static_cast<bool>(reader.error()));
  EXPECT_EQ(reader.next(), item) << "the end was not the end";
  whole.header = reader.header();
  whole.error = reader.error();
  if (whole.error) whole.text = reader.error_text();
  return whole;
}

// The base of tests that read what a run has written.
class ResultsTest : public RunTest {
 protected:
  // Runs the program on `in.fas` and reads its results.
  whole_results read_run(std::vector<std::string> options) {
    options.push_back(in());
    options.push_back(out());
    run(std::move(options));
    EXPECT_EQ(status, 0) << messages;
    return read_results(out());
  }

  std::string written() const { return directory.contents("out.txt"); }

  whole_results read_text(const std::string& text) { return read_results(directory.write("text", text)); }
};
