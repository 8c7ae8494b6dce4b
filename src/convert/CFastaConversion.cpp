#include "CFastaConversion.h"

namespace {

void append_lower_case(std::string& text, const std::string& symbols) {
  for (const char c : symbols) text += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool CFastaConversion::begin(std::FILE* /*out*/, const results_header& header) {
  return header.tells_symbols() || refuse(missing_symbols);
}

bool CFastaConversion::begin_sequence(std::FILE* /*out*/, const results_sequence& sequence) {
  return names.begin_sequence(sequence) || refuse(repeated_name(sequence));
}

bool CFastaConversion::add(std::FILE* out, const results_repeat& repeat) {
  std::string record = '>' + names.next(repeat) + " unit=" + repeat.unit + " copies=";
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
