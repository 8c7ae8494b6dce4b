#include "CJsonConversion.h"

#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "json-text.h"
#include "text-output.h"

namespace {

using nlohmann::ordered_json;

template <typename Value>
ordered_json value_or_null(const std::optional<Value>& value) {
  return value ? ordered_json(*value) : ordered_json();
}

// The number that stands in the other formats, with three decimals.
double rounded(double value) {
  std::string text;
  append_fixed(text, value, 3);
  return std::strtod(text.c_str(), nullptr);
}

// As an ordered list of pairs of position and kind.
ordered_json edits_of(const results_repeat& repeat) {
  if (!repeat.edits) return nullptr;
  ordered_json list = ordered_json::array();
  for (const results_edit& edit : *repeat.edits) list.push_back({edit.position, std::string(1, edit.kind)});
  return list;
}

ordered_json object_of(const results_repeat& repeat) {
  ordered_json object;
  object["start"] = repeat.start;
  object["end"] = repeat.end;
  object["unit"] = repeat.unit;
  object["normal_form"] = repeat.normal_form;
  object["unit_length"] = repeat.unit_length;
  object["copy_number"] = rounded(static_cast<double>(repeat.copy_number()));
  object["span"] = repeat.span;
  object["aligned_length"] = repeat.length;
  object["score"] = repeat.score;
  object["perfection"] = std::isfinite(repeat.perfection) ? ordered_json(repeat.perfection) : ordered_json();
  object["mismatches"] = value_or_null(repeat.mismatches);
  object["insertions"] = value_or_null(repeat.insertions);
  object["deletions"] = value_or_null(repeat.deletions);
  object["ns"] = value_or_null(repeat.Ns);
  object["edits"] = edits_of(repeat);
  object["symbols"] = value_or_null(repeat.sequence);
  object["left_flank"] = value_or_null(repeat.left_flank);
  object["right_flank"] = value_or_null(repeat.right_flank);
  return object;
}

}  // namespace

bool CJsonConversion::begin(std::FILE* /*out*/, const results_header& header) {
  has_all_sequences = header.names_every_sequence();
  return true;
}

bool CJsonConversion::begin_sequence(std::FILE* /*out*/, const results_sequence& sequence) {
  ordered_json object;
  object["sequence"] = as_utf8(sequence.name);
  if (!is_utf8(sequence.name)) object["sequence_hex"] = hexadecimal(sequence.name);
  object["sequence_number"] = has_all_sequences ? ordered_json(sequence.ordinal) : ordered_json();
  object["sequence_length"] = value_or_null(sequence.length);
  beginning = object.dump();
  beginning.back() = ',';
  return true;
}

bool CJsonConversion::add(std::FILE* out, const results_repeat& repeat) {
  write(out, beginning);
  const std::string rest = object_of(repeat).dump();
  write(out, std::string_view(rest).substr(1));
  write(out, "\n");
  return true;
}
