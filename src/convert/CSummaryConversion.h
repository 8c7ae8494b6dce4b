#pragma once

#include <string>

#include "CConversion.h"
#include "CSummary.h"

// What both summaries have in common: they collect, and write when all is known.
class CSummaryConversion : public CConversion {
 public:
  explicit CSummaryConversion(const conversion_settings& settings) : symbols_in_table(settings.symbols_in_table) {}

  bool begin(std::FILE* out, const results_header& its_header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;

 protected:
  results_header header;
  CSummary summary;

  // The symbols that were searched, where that is known: the sum of the lengths of all sequences that were processed.
  std::optional<std::int64_t> searched_symbols() const;

 private:
  std::optional<std::int64_t> symbols_in_table;
};

// So many in a million symbols; nothing when there is no symbol or their number is not known.
std::optional<double> per_megabase(std::int64_t count, std::optional<std::int64_t> symbols);

// Tab-separated lines with a header line: a line for all, then for each unit length, unit and sequence. NA stands for
// a number that is not known.
class CTableConversion : public CSummaryConversion {
 public:
  using CSummaryConversion::CSummaryConversion;
  bool finish(std::FILE* out) override;
};

// A JSON file of custom content for MultiQC: a table with the same lines, of which only the units and the sequences
// with most repeats are told.
class CMultiqcConversion : public CSummaryConversion {
 public:
  // An empty sample stands for the name of the input file.
  explicit CMultiqcConversion(const conversion_settings& settings)
      : CSummaryConversion(settings), sample_name(settings.sample) {}
  bool finish(std::FILE* out) override;

 private:
  std::string sample_name;
};
