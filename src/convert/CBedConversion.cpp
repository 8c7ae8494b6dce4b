#include "CBedConversion.h"

#include <algorithm>
#include <cmath>

#include "text-output.h"

namespace {

constexpr int highest_score = 1000;

}  // namespace

bool CBedConversion::begin(std::FILE* out, const results_header& /*header*/) {
  if (!has_column_names) return true;
  write(out, "#chrom\tstart\tend\tunit\tscore\tstrand");
  write(out, has_more_columns ? "\tcopies\tpurity\tunit_length\n" : "\n");
  return true;
}

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
  line += "\t.";
  if (has_more_columns) append_more_columns(repeat);
  line += '\n';
  write(out, line);
  return true;
}

void CBedConversion::append_more_columns(const results_repeat& repeat) {
  line += '\t';
  append_fixed(line, static_cast<double>(repeat.copy_number()), 3);
  line += '\t';
  if (std::isnan(repeat.perfection)) {
    line += '.';
  } else {
    append_fixed(line, repeat.perfection, 3);
  }
  line += '\t';
  append_number(line, repeat.unit_length);
}
