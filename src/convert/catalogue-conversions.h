#pragma once

#include "CConversion.h"
#include "CPlaceNames.h"

// Catalogues of loci for programs that genotype repeats from reads. What these count in the reads is the unit on the
// strand of the sequence, so results that may have written it on the other one are refused.
class CCatalogueConversion : public CConversion {
 public:
  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;

 protected:
  // For messages: the name of the format, and the bytes that no name of a sequence may hold in it.
  CCatalogueConversion(const char* its_format, const char* its_forbidden_bytes)
      : format(its_format), forbidden_bytes(its_forbidden_bytes) {}

  const std::string& sequence() const { return names.sequence_name(); }

 private:
  const char* format;
  const char* forbidden_bytes;
  CPlaceNames names;

  // Writes the locus under its name. Returns false when the format cannot express it.
  virtual bool add_locus(std::FILE* out, const results_repeat& repeat, const std::string& name,
                         const std::string& unit) = 0;
};

// TRGT: BED with the name of the locus, its motif and its structure.
class CTrgtConversion : public CCatalogueConversion {
 public:
  CTrgtConversion() : CCatalogueConversion("TRGT", ";=,") {}

 private:
  bool add_locus(std::FILE* out, const results_repeat& repeat, const std::string& name,
                 const std::string& unit) override;
};

// HipSTR: sequence, first and last symbol counted from 1, unit length (up to 9), copies, name with the unit.
class CHipstrConversion : public CCatalogueConversion {
 public:
  CHipstrConversion() : CCatalogueConversion("HipSTR", "") {}

 private:
  bool add_locus(std::FILE* out, const results_repeat& repeat, const std::string& name,
                 const std::string& unit) override;
};

// ExpansionHunter: a JSON array with an object for each locus.
class CExpansionHunterConversion : public CCatalogueConversion {
 public:
  CExpansionHunterConversion() : CCatalogueConversion("ExpansionHunter", ":") {}
  bool finish(std::FILE* out) override;

 private:
  bool has_loci = false;
  bool add_locus(std::FILE* out, const results_repeat& repeat, const std::string& name,
                 const std::string& unit) override;
};
