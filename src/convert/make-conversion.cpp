#include "CBedConversion.h"
#include "CConversion.h"
#include "CFastaConversion.h"
#include "CGff3Conversion.h"
#include "CJsonConversion.h"
#include "CMaskConversion.h"
#include "CMergedConversion.h"
#include "CPrimer3Conversion.h"
#include "CRepeatTableConversion.h"
#include "CSummaryConversion.h"
#include "catalogue-conversions.h"

namespace {

std::unique_ptr<CConversion> make_plain(const conversion_settings& settings) {
  switch (settings.to) {
    case to_bed:
      return std::make_unique<CBedConversion>(settings);
    case to_gff3:
      return std::make_unique<CGff3Conversion>(settings);
    case to_json:
      return std::make_unique<CJsonConversion>();
    case to_table:
      return std::make_unique<CRepeatTableConversion>();
    case to_fasta:
      return std::make_unique<CFastaConversion>();
    case to_primer3:
      return std::make_unique<CPrimer3Conversion>();
    case to_trgt:
      return std::make_unique<CTrgtConversion>();
    case to_hipstr:
      return std::make_unique<CHipstrConversion>();
    case to_expansionhunter:
      return std::make_unique<CExpansionHunterConversion>();
    case to_mask:
      return std::make_unique<CMaskConversion>(settings.fasta, settings.mask);
    case to_tsv:
      return std::make_unique<CTableConversion>(settings);
    default:
      return std::make_unique<CMultiqcConversion>(settings);
  }
}

// A locus of a catalogue is the repeat of one unit, so it keeps its own ends.
bool is_catalogue(int format) { return format == to_trgt || format == to_hipstr || format == to_expansionhunter; }

}  // namespace

std::unique_ptr<CConversion> make_conversion(const conversion_settings& settings) {
  std::unique_ptr<CConversion> plain = make_plain(settings);
  if (!settings.merges) return plain;
  return std::make_unique<CMergedConversion>(std::move(plain), !is_catalogue(settings.to));
}
