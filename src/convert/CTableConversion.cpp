// The summary as a table.

#include "CSummaryConversion.h"
#include "sequence-names.h"
#include "text-output.h"

namespace {

class CTableLine {
 public:
  CTableLine(std::string_view grouped_by, std::string_view group) {
    text = grouped_by;
    text += '\t';
    text += group;
  }

  void end(std::FILE* out, const repeat_tally& counts, std::optional<std::int64_t> symbols) {
    text += '\t';
    append_number(text, counts.repeats);
    text += '\t';
    append_number(text, counts.covered());
    text += '\t' + (symbols ? std::to_string(*symbols) : "NA");
    density(counts.repeats, symbols);
    density(counts.covered(), symbols);
    text += '\n';
    write(out, text);
  }

 private:
  std::string text;

  void density(std::int64_t count, std::optional<std::int64_t> symbols) {
    text += '\t';
    if (const auto value = per_megabase(count, symbols)) {
      append_fixed(text, *value, 3);
    } else {
      text += "NA";
    }
  }
};

}  // namespace

bool CTableConversion::finish(std::FILE* out) {
  const std::optional<std::int64_t> symbols = searched_symbols();
  write(out,
        "grouped_by\tgroup\trepeats\tcovered_symbols\tsearched_symbols\trepeats_per_megabase\t"
        "covered_per_megabase\n");
  CTableLine("all", "all").end(out, summary.all(), symbols);
  for (const auto& [length, counts] : summary.by_unit_length()) {
    CTableLine("unit_length", std::to_string(length)).end(out, counts, symbols);
  }
  for (const auto& [unit, counts] : summary.by_unit()) CTableLine("unit", unit).end(out, counts, symbols);
  for (const CSummary::sequence_row& row : summary.by_sequence()) {
    CTableLine("sequence", plain_name(row.name)).end(out, row.counts, row.length);
  }
  return true;
}
