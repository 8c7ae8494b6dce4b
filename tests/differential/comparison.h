// What counts as a difference between two runs.
#pragma once

#include <optional>
#include <string>

#include "runner.h"

namespace differential {

struct difference {
  std::string channel;  // "exit status" or the name of the file that differs
  std::string text;     // the first place where it differs, for a reader
};

// Standard error with the time of every progress line replaced by hh.mm.ss.
std::string without_times(const std::string& standard_error);

// The first difference in the order exit status, stderr, stdout, other files; none if the two runs agree.
std::optional<difference> compare(const run_outcome& program, const run_outcome& reference);

}  // namespace differential
