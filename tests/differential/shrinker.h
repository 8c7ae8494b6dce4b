// Makes a failing case smaller: fewer options, fewer records, fewer bytes, smaller numbers; in what must stay large,
// one symbol over and over.
//
// Delta debugging (Zeller and Hildebrandt 2002) over options, records and bytes in turn, until nothing more can go or
// the allowance of runs or of time is used up. It knows nothing of what makes a case fail.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "test-case.h"

namespace differential {

class CShrinker {
 public:
  // still_fails says whether a smaller case fails in the same way as the case to be shrunk.
  CShrinker(std::function<bool(const test_case&)> still_fails, int most_runs, int most_seconds);

  // The case given fails; so does the one returned.
  test_case shrink(test_case failing);

 private:
  std::function<bool(const test_case&)> fails;
  int runs_left;
  std::chrono::steady_clock::time_point deadline;
  test_case smallest;

  bool may_go_on() const;
  bool accept_if_failing(const test_case& candidate);
  bool drop_options();
  bool drop_parts(std::vector<std::string> parts);
  bool blank_symbols();
  bool join_lines();
  bool reduce_numbers();
};

// The file cut in front of every line that begins with '>'; joined, the parts are the file.
std::vector<std::string> cut_into_records(const std::string& fasta);

}  // namespace differential
