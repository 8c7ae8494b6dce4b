#include "CRepeatTableConversion.h"

#include <cmath>

#include "sequence-names.h"
#include "text-output.h"

namespace {

constexpr const char* column_names =
    "sequence\tsequence_number\tsequence_length\tstart\tend\tunit\tnormal_form\tunit_length\tcopy_number\tspan\t"
    "aligned_length\tscore\tperfection\tmismatches\tinsertions\tdeletions\tns\tedits\tsymbols\tleft_flank\t"
    "right_flank\n";

void append_field(std::string& line, std::string_view text) { line.append("\t").append(text); }
void append_field(std::string& line, int number) {
  line += '\t';
  append_number(line, number);
}
void append_field(std::string& line, double number) {
  line += '\t';
  append_fixed(line, number, 3);
}
template <typename Value>
void append_field(std::string& line, const std::optional<Value>& value) {
  if (value) {
    append_field(line, *value);
  } else {
    line += "\tNA";
  }
}

// As 19I,33D,58M; no edits are an empty text.
std::optional<std::string> edits_of(const results_repeat& repeat) {
  if (!repeat.edits) return std::nullopt;
  std::string text;
  for (const results_edit& edit : *repeat.edits) {
    if (!text.empty()) text += ',';
    append_number(text, edit.position);
    text += edit.kind;
  }
  return text;
}

}  // namespace

bool CRepeatTableConversion::begin(std::FILE* out, const results_header& header) {
  has_all_sequences = header.names_every_sequence();
  write(out, column_names);
  return true;
}

bool CRepeatTableConversion::begin_sequence(std::FILE* /*out*/, const results_sequence& sequence) {
  beginning = plain_name(sequence.name);
  append_field(beginning, has_all_sequences ? std::optional(std::to_string(sequence.ordinal)) : std::nullopt);
  append_field(beginning, sequence.length);
  return true;
}

bool CRepeatTableConversion::add(std::FILE* out, const results_repeat& repeat) {
  line = beginning;
  append_field(line, repeat.start);
  append_field(line, repeat.end);
  append_field(line, repeat.unit);
  append_field(line, repeat.normal_form);
  append_field(line, repeat.unit_length);
  append_field(line, static_cast<double>(repeat.copy_number()));
  append_field(line, repeat.span);
  append_field(line, repeat.length);
  append_field(line, repeat.score);
  append_field(line, std::isnan(repeat.perfection) ? std::nullopt : std::optional(repeat.perfection));
  for (const std::optional<int>& count : {repeat.mismatches, repeat.insertions, repeat.deletions, repeat.Ns}) {
    append_field(line, count);
  }
  for (const std::optional<std::string>& text :
       {edits_of(repeat), repeat.sequence, repeat.left_flank, repeat.right_flank}) {
    append_field(line, text);
  }
  line += '\n';
  write(out, line);
  return true;
}
