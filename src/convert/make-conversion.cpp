#include "CBedConversion.h"
#include "CConversion.h"
#include "CFastaConversion.h"
#include "CGff3Conversion.h"
#include "CJsonConversion.h"
#include "CRepeatTableConversion.h"
#include "CSummaryConversion.h"

std::unique_ptr<CConversion> make_conversion(const conversion_settings& settings, const CSequenceLengths& lengths) {
  switch (settings.to) {
    case to_bed:
      return std::make_unique<CBedConversion>();
    case to_gff3:
      return std::make_unique<CGff3Conversion>(lengths);
    case to_json:
      return std::make_unique<CJsonConversion>(lengths);
    case to_table:
      return std::make_unique<CRepeatTableConversion>(lengths);
    case to_fasta:
      return std::make_unique<CFastaConversion>();
    case to_tsv:
      return std::make_unique<CTableConversion>(lengths);
    default:
      return std::make_unique<CMultiqcConversion>(lengths, settings.sample);
  }
}
