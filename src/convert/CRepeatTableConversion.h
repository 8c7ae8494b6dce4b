#pragma once

#include "CConversion.h"

// A tab-separated table for R, pandas and spreadsheets: a line of column names, then a line a repeat. The columns are
// the same for all results; NA stands for what these do not tell.
class CRepeatTableConversion : public CConversion {
 public:
  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;

 private:
  bool has_all_sequences = false;
  std::string beginning;  // of each line: what its sequence is
  std::string line;
};
