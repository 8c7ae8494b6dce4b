#include "CPrimer3Conversion.h"

bool CPrimer3Conversion::begin(std::FILE* /*out*/, const results_header& header) {
  if (!header.tells_symbols()) return refuse(missing_symbols);
  return header.flanking > 0 ||
         refuse(
             "Sorry, these results hold no flanks of the repeats, and primers lie there. Please search again with\n"
             "--flanking 200 or more.\n");
}

bool CPrimer3Conversion::begin_sequence(std::FILE* /*out*/, const results_sequence& sequence) {
  return names.begin_sequence(sequence) || refuse(repeated_name(sequence));
}

// Places in a template count from 0, as primer3 takes them unless it is told otherwise.
bool CPrimer3Conversion::add(std::FILE* out, const results_repeat& repeat) {
  const std::string left = repeat.left_flank.value_or("");
  const std::string symbols = repeat.sequence.value_or("");
  std::string record = "SEQUENCE_ID=" + names.next(repeat) + "\nSEQUENCE_TEMPLATE=" + left + symbols +
                       repeat.right_flank.value_or("") + "\nSEQUENCE_TARGET=";
  append_number(record, left.size());
  record += ',';
  append_number(record, symbols.size());
  write(out, record + "\n=\n");
  return true;
}
