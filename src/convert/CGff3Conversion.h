#pragma once

#include <cstdint>

#include "CConversion.h"
#include "CTemporaryText.h"
#include "sequence-names.h"

// GFF3: features of the type tandem_repeat with the score of the repeat, in the order of the results. Each sequence
// whose length is known has its sequence-region. All of these stand at the head, since tabix cannot read on after such
// a line between features; the features wait in a temporary file, which memory need not hold.
class CGff3Conversion : public CConversion {
 public:
  explicit CGff3Conversion(const conversion_settings& settings)
      : may_have_regions(settings.symbols_in_table.has_value()) {}

  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;
  bool finish(std::FILE* out) override;

 private:
  std::string name;
  std::string line;
  std::int64_t repeats = 0;
  bool may_have_regions;
  CTemporaryText features;
  CNameRegister names;

  void append_attributes(const results_repeat& repeat);
  void append_count(std::string_view key, const std::optional<int>& count);
};
