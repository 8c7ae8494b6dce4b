#pragma once

#include "CConversion.h"
#include "CPlaceNames.h"

// FASTA: a record a repeat, named by its place. Where the results have flanks, they stand around the repeat in lower
// case.
class CFastaConversion : public CConversion {
 public:
  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;

 private:
  CPlaceNames names;
};
