#ifndef QUARVO_CBEDCONVERSION_H
#define QUARVO_CBEDCONVERSION_H

#include "CConversion.h"
#include "sequence-names.h"

// BED of six columns: sequence, start from 0, end exclusive, unit, score cut to 0 .. 1000 as BED allows, and '.' for
// the strand. In the order of the results: by sequence, then by start.
class CBedConversion : public CConversion {
 public:
  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;

 private:
  std::string name;
  std::string line;
  CNameRegister names;
};

#endif
