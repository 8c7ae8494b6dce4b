#pragma once

#include "CConversion.h"

// Passes one repeat to another conversion for all that overlap: the one with the highest score, the first of equals.
// It may extend over all of them; what counts places in the repeat, edits and alignment, is then left out.
class CMergedConversion : public CConversion {
 public:
  CMergedConversion(std::unique_ptr<CConversion> conversion, bool does_extend)
      : inner(std::move(conversion)), extends(does_extend) {}

  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;
  bool finish(std::FILE* out) override;

 private:
  std::unique_ptr<CConversion> inner;
  bool extends;
  int repeats = 0;       // that overlap and wait
  results_repeat best;   // of them
  results_repeat whole;  // the first of them, with ends, symbols and flanks of all

  bool pass(std::FILE* out);
  bool told(bool outcome) { return outcome || refuse(inner->error(), inner->status()); }
};
