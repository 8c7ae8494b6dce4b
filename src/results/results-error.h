#pragma once

#include <string>

// Why a results file cannot be used, and what the user can do about it.
struct results_error {
  enum class kind_type {
    none,
    not_opened,   // the file cannot be opened
    not_read,     // the system failed to read it
    not_results,  // something else than results, or results that were changed
    not_suited,   // results in a format that does not tell enough
    unfinished    // the closing line is missing
  };

  kind_type kind = kind_type::none;
  std::string text;  // one or more lines, each with its line end: where, what was expected, what to do

  explicit operator bool() const { return kind != kind_type::none; }
};
