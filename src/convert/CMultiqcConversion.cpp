// The summary for MultiQC.

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "CSummaryConversion.h"
#include "json-text.h"
#include "sequence-names.h"
#include "text-output.h"

namespace {

using nlohmann::ordered_json;

// MultiQC shows tables of more than 500 rows as plots, and people read fewer.
constexpr std::size_t most_units = 20;
constexpr std::size_t most_sequences = 20;

// "dir/sample.fa.gz" gives "sample".
std::string sample_of(const std::string& file_name) {
  std::filesystem::path path = std::filesystem::path(file_name).filename();
  if (path.extension() == ".gz" || path.extension() == ".bgz") path = path.stem();
  for (const char* ending : {".fa", ".fasta", ".fas", ".fna", ".fsa", ".txt"}) {
    if (path.extension() == ending) return path.stem().string();
  }
  return path.string();
}

ordered_json column(const char* title, const char* description, const char* format) {
  return {{"title", title}, {"description", description}, {"format", format}, {"min", 0}};
}

ordered_json page() {
  return {{"id", "quarvo_repeats"},
          {"section_name", "Tandem repeats"},
          {"description",
           "Tandem repeats found by Quarvo: all, by unit length, and the units and sequences with most repeats. A "
           "symbol is covered once however many repeats of one row lie over it."},
          {"plot_type", "table"},
          {"pconfig", {{"id", "quarvo_repeats_table"}, {"title", "Quarvo: tandem repeats"}, {"no_beeswarm", true}}},
          {"headers",
           {{"repeats", column("Repeats", "Number of repeats", "{:,.0f}")},
            {"covered_symbols", column("Covered", "Symbols covered by repeats", "{:,.0f}")},
            {"repeats_per_megabase", column("Repeats / Mb", "Repeats in a million symbols", "{:,.2f}")},
            {"covered_per_megabase", column("Covered / Mb", "Covered symbols in a million symbols", "{:,.1f}")}}}};
}

ordered_json row(const repeat_tally& counts, std::optional<std::int64_t> symbols) {
  ordered_json values{{"repeats", counts.repeats}, {"covered_symbols", counts.covered()}};
  if (const auto density = per_megabase(counts.repeats, symbols)) values["repeats_per_megabase"] = *density;
  if (const auto density = per_megabase(counts.covered(), symbols)) values["covered_per_megabase"] = *density;
  return values;
}

// The elements with most repeats, in their former order; of equal ones the former are kept.
template <typename Element, typename Count>
std::vector<Element> richest(std::vector<Element> elements, std::size_t most, Count repeats_of) {
  std::vector<std::size_t> order(elements.size());
  for (std::size_t i = 0; i != order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return repeats_of(elements[a]) > repeats_of(elements[b]); });
  order.resize(std::min(most, order.size()));
  std::sort(order.begin(), order.end());
  std::vector<Element> kept;
  kept.reserve(order.size());
  for (const std::size_t i : order) kept.push_back(std::move(elements[i]));
  return kept;
}

// The key, or where it is taken, the key with the first number that makes it a new one.
std::string new_key(const ordered_json& rows, const std::string& key) {
  std::string candidate = key;
  for (int number = 2; rows.contains(candidate); ++number) candidate = key + " (" + std::to_string(number) + ")";
  return candidate;
}

}  // namespace

bool CMultiqcConversion::finish(std::FILE* out) {
  const std::string sample = as_utf8(sample_name.empty() ? sample_of(header.input_file_name) : sample_name);
  const std::optional<std::int64_t> symbols = searched_symbols();
  ordered_json rows;
  const auto add_row = [&](const std::string& name, const repeat_tally& counts, auto of_symbols) {
    rows[new_key(rows, sample + name)] = row(counts, of_symbols);
  };
  add_row("", summary.all(), symbols);
  for (const auto& [length, counts] : summary.by_unit_length()) {
    add_row(" unit length " + std::to_string(length), counts, symbols);
  }
  for (const auto& [unit, counts] :
       richest(summary.by_unit(), most_units, [](const auto& unit) { return unit.second.repeats; })) {
    add_row(" unit " + unit, counts, symbols);
  }
  for (const auto& [name, length, counts] :
       richest(summary.by_sequence(), most_sequences, [](const auto& row) { return row.counts.repeats; })) {
    add_row(" sequence " + as_utf8(plain_name(name)), counts, length);
  }
  ordered_json content = page();
  content["data"] = std::move(rows);
  write(out, content.dump(1) + '\n');
  return true;
}
