#pragma once

#include "CConversion.h"
#include "sequence-names.h"

// BED of six columns: sequence, start from 0, end exclusive, unit, score cut to 0 .. 1000 as BED allows, and '.' for
// the strand; on request three more, copies, purity in percent and unit length. In the order of the results: by
// sequence, then by start.
class CBedConversion : public CConversion {
 public:
  explicit CBedConversion(const conversion_settings& settings)
      : has_more_columns(settings.has_more_columns), has_column_names(settings.has_column_names) {}

  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;

 private:
  bool has_more_columns;
  bool has_column_names;
  std::string name;
  std::string line;
  CNameRegister names;

  void append_more_columns(const results_repeat& repeat);
};
