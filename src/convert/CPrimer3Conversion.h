#pragma once

#include "CConversion.h"
#include "CPlaceNames.h"

// Boulder-IO for primer3: a record a repeat, its template the repeat between its flanks, its target the repeat.
class CPrimer3Conversion : public CConversion {
 public:
  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;

 private:
  CPlaceNames names;
};
