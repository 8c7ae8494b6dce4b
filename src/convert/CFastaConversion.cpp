#include "CFastaConversion.h"

#include "text-output.h"

namespace {

void append_lower_case(std::string& text, const std::string& symbols) {
  for (const char c : symbols) text += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool CFastaConversion::begin(std::FILE* /*out*/, const results_header& header) {
  return header.tells_symbols() || refuse(missing_symbols);
}

bool CFastaConversion::begin_sequence(std::FILE* /*out*/, const results_sequence& sequence) {
  name = plain_name(sequence.name);
  return names.add(name) || refuse(repeated_name(sequence));
}

// Repeats of one place follow each other, and all but the first get a number.
bool CFastaConversion::add(std::FILE* out, const results_repeat& repeat) {
  record = '>' + name + ':';
  append_number(record, repeat.start);
  record += '-';
  append_number(record, repeat.end);
  at_place = record == place ? at_place + 1 : 1;
  place = record;
  if (at_place > 1) record += ':' + std::to_string(at_place);
  record += " unit=" + repeat.unit + " copies=";
  append_fixed(record, static_cast<double>(repeat.copy_number()), 3);
  record += " score=";
  append_number(record, repeat.score);
  record += '\n';
  append_lower_case(record, repeat.left_flank.value_or(""));
  record += repeat.sequence.value_or("");
  append_lower_case(record, repeat.right_flank.value_or(""));
  record += '\n';
  write(out, record);
  return true;
}
