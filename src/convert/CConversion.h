#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "companion.h"
#include "conversion-settings.h"
#include "results-records.h"

// One output format: takes what the reader gives, in its order, and writes to a stream. Write errors are left in the
// stream's error flag. Where a step returns false, error() says why.
class CConversion {
 public:
  CConversion() = default;
  CConversion(const CConversion&) = delete;
  CConversion& operator=(const CConversion&) = delete;
  virtual ~CConversion() = default;

  // Called first, once. Returns false when such results do not tell what the format needs.
  virtual bool begin(std::FILE* out, const results_header& header) = 0;

  // A sequence, with the length that the results or the table of lengths tell. Returns false when the format cannot
  // express it.
  virtual bool begin_sequence(std::FILE* out, const results_sequence& sequence) = 0;

  // A repeat of the sequence begun last. Returns false when the format cannot express it.
  virtual bool add(std::FILE* out, const results_repeat& repeat) = 0;

  // Called last, and only when the results are whole. Returns false when a file beside the output could not be written.
  virtual bool finish(std::FILE* /*out*/) { return true; }

  // Lines for the user, each with its line end: what is wrong and what to do.
  const std::string& error() const { return problem; }
  // What the program then ends with.
  int status() const { return its_status; }

 protected:
  bool refuse(const std::string& why, int status = companion_status::not_suited) {
    problem = why;
    its_status = status;
    return false;
  }

 private:
  std::string problem;
  int its_status = 0;
};

// Why results cannot become a format that shows the symbols of repeats.
inline constexpr const char* missing_symbols =
    "Sorry, these results hold no symbols of the repeats. Please search again without --printRepeatSeqMode 0, or with\n"
    "--outputFormat 3.\n";

// The conversion that is asked for.
std::unique_ptr<CConversion> make_conversion(const conversion_settings& settings);
