#ifndef QUARVO_CCONVERSION_H
#define QUARVO_CCONVERSION_H

#include <cstdio>
#include <memory>
#include <string>

#include "CSequenceLengths.h"
#include "convert-options.h"
#include "results-records.h"

// One output format: takes what the reader gives, in its order, and writes to a stream. Write errors are left in the
// stream's error flag.
class CConversion {
 public:
  CConversion() = default;
  CConversion(const CConversion&) = delete;
  CConversion& operator=(const CConversion&) = delete;
  virtual ~CConversion() = default;

  // Called first, once.
  virtual void begin(std::FILE* out, const results_header& header) = 0;

  // A sequence, with the length that the results or the table of lengths tell. Returns false when the format cannot
  // express it; error() says why.
  virtual bool begin_sequence(std::FILE* out, const results_sequence& sequence) = 0;

  // A repeat of the sequence begun last.
  virtual void add(std::FILE* out, const results_repeat& repeat) = 0;

  // Called last, and only when the results are whole. Returns false when a file beside the output could not be written;
  // error() says why.
  virtual bool finish(std::FILE* out) = 0;

  // Lines for the user, each with its line end: what is wrong and what to do.
  const std::string& error() const { return problem; }

 protected:
  bool refuse(const std::string& why) {
    problem = why;
    return false;
  }

 private:
  std::string problem;
};

// The conversion to a format. `lengths` must outlive it.
std::unique_ptr<CConversion> make_conversion(convert_format format, const CSequenceLengths& lengths,
                                             const std::string& sample);

#endif
