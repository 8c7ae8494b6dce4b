#include "CSummaryConversion.h"

#include "text-output.h"

bool CSummaryConversion::begin(std::FILE* /*out*/, const results_header& its_header) {
  header = its_header;
  return true;
}

bool CSummaryConversion::begin_sequence(std::FILE* /*out*/, const results_sequence& sequence) {
  summary.begin_sequence(sequence);
  return true;
}

bool CSummaryConversion::add(std::FILE* /*out*/, const results_repeat& repeat) {
  summary.add(repeat);
  return true;
}

// Results that leave out sequences without repeats need the table of lengths for them, and a run over the whole input.
std::optional<std::int64_t> CSummaryConversion::searched_symbols() const {
  if (header.names_every_sequence()) return summary.total_length();
  if (!header.is_whole_input || !summary.total_length()) return std::nullopt;
  return symbols_in_table;
}

std::optional<double> per_megabase(std::int64_t count, std::optional<std::int64_t> symbols) {
  if (!symbols || *symbols == 0) return std::nullopt;
  return static_cast<double>(count) * 1e6 / static_cast<double>(*symbols);
}
