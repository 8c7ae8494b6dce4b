#include "CBedConversion.h"

#include <algorithm>

#include "text-output.h"

namespace {

constexpr int highest_score = 1000;

}  // namespace

bool CBedConversion::begin(std::FILE* /*out*/, const results_header& /*header*/) { return true; }

bool CBedConversion::begin_sequence(std::FILE* /*out*/, const results_sequence& sequence) {
  name = plain_name(sequence.name);
  if (!is_bed_name(name)) return refuse(unsuited_name(sequence, "BED"));
  return names.add(name) || refuse(repeated_name(sequence));
}

bool CBedConversion::add(std::FILE* out, const results_repeat& repeat) {
  line = name;
  line += '\t';
  append_number(line, repeat.start - 1);
  line += '\t';
  append_number(line, repeat.end);
  line += '\t';
  line += repeat.unit;
  line += '\t';
  append_number(line, std::clamp(repeat.score, 0, highest_score));
  line += "\t.\n";
  write(out, line);
  return true;
}
