#pragma once

#include <cstdio>
#include <string>
#include <thread>

#include "conversion-settings.h"

// Turns results into another format as they are written: quarvo-convert after quarvo, in one program. What is written
// to stream() is read, checked and converted by a thread of its own. Not copyable.
class CConversionPipe {
 public:
  CConversionPipe() = default;
  CConversionPipe(const CConversionPipe&) = delete;
  CConversionPipe& operator=(const CConversionPipe&) = delete;
  ~CConversionPipe() { finish(); }

  // Returns false when there is no pipe to be had.
  bool open(std::FILE* to, const conversion_settings& settings);

  std::FILE* stream() const { return in; }

  // Ends the results and waits for the conversion. Returns 0, or the exit status, with why in error(); results that
  // were cut off are an error.
  int finish();
  const std::string& error() const { return problem; }

 private:
  std::FILE* in = nullptr;
  int read_end = -1;
  std::thread converter;
  int status = 0;
  std::string problem;

  void convert(std::FILE* to, const conversion_settings& settings);
};
