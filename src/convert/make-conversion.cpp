#include "CBedConversion.h"
#include "CConversion.h"
#include "CGff3Conversion.h"
#include "CJsonConversion.h"
#include "CSummaryConversion.h"

std::unique_ptr<CConversion> make_conversion(convert_format format, const CSequenceLengths& lengths,
                                             const std::string& sample) {
  switch (format) {
    case to_bed:
      return std::make_unique<CBedConversion>();
    case to_gff3:
      return std::make_unique<CGff3Conversion>(lengths);
    case to_json:
      return std::make_unique<CJsonConversion>(lengths);
    case to_tsv:
      return std::make_unique<CTableConversion>(lengths);
    default:
      return std::make_unique<CMultiqcConversion>(lengths, sample);
  }
}
