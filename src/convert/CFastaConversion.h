#ifndef QUARVO_CFASTACONVERSION_H
#define QUARVO_CFASTACONVERSION_H

#include "CConversion.h"
#include "sequence-names.h"

// FASTA: a record a repeat, named by its place, as gattaca:5-74. Where the results have flanks, they stand around the
// repeat in lower case.
class CFastaConversion : public CConversion {
 public:
  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;

 private:
  std::string name;
  std::string place;  // of the repeat before
  int at_place = 0;   // repeats there so far
  std::string record;
  CNameRegister names;
};

#endif
