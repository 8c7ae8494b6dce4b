#pragma once

#include "CConversion.h"

// JSON lines: one object a repeat, always valid UTF-8. The keys are the same for every repeat; what the results do not
// tell is null.
//
// A name that is no valid UTF-8 has the replacement character for each byte that cannot be read, and the object has one
// more key, sequence_hex, with all bytes of the name in hexadecimal.
class CJsonConversion : public CConversion {
 public:
  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;

 private:
  bool has_all_sequences = false;
  std::string beginning;  // of each object: what its sequence is
};
