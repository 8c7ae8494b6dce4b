#include "CGff3Conversion.h"

#include <cmath>

#include "text-output.h"

bool CGff3Conversion::begin(std::FILE* out, const results_header& header) {
  may_have_regions = may_have_regions || header.names_every_sequence();
  write(out, "##gff-version 3\n");
  return true;
}

bool CGff3Conversion::begin_sequence(std::FILE* out, const results_sequence& sequence) {
  name = gff3_name(plain_name(sequence.name));
  if (name.empty()) return refuse(unsuited_name(sequence, "GFF3"));
  if (!names.add(name)) return refuse(repeated_name(sequence));
  if (sequence.length.value_or(0) == 0) return true;
  line = "##sequence-region " + name + " 1 ";
  append_number(line, *sequence.length);
  line += '\n';
  write(out, line);
  return true;
}

// Without lengths there is no region, and nothing to wait for.
bool CGff3Conversion::add(std::FILE* out, const results_repeat& repeat) {
  line = name;
  line += "\tQuarvo\ttandem_repeat\t";
  append_number(line, repeat.start);
  line += '\t';
  append_number(line, repeat.end);
  line += '\t';
  append_number(line, repeat.score);
  line += "\t.\t.\t";
  append_attributes(repeat);
  line += '\n';
  if (may_have_regions) {
    features.append(line);
  } else {
    write(out, line);
  }
  return true;
}

// Keys of attributes that GFF3 does not define itself are in lower case. No value needs escaping.
void CGff3Conversion::append_attributes(const results_repeat& repeat) {
  line += "ID=tr";
  append_number(line, ++repeats);
  line += ";Name=" + repeat.unit + ";unit=" + repeat.unit + ";normal_form=" + repeat.normal_form + ";unit_length=";
  append_number(line, repeat.unit_length);
  line += ";copy_number=";
  append_fixed(line, static_cast<double>(repeat.copy_number()), 3);
  if (!std::isnan(repeat.perfection)) {
    line += ";perfection=";
    append_fixed(line, repeat.perfection, 3);
  }
  append_count("mismatches", repeat.mismatches);
  append_count("insertions", repeat.insertions);
  append_count("deletions", repeat.deletions);
  append_count("ns", repeat.Ns);
}

void CGff3Conversion::append_count(std::string_view key, const std::optional<int>& count) {
  if (!count) return;
  line += ';';
  line += key;
  line += '=';
  append_number(line, *count);
}

bool CGff3Conversion::finish(std::FILE* out) {
  return features.copy_to(out) || refuse("Sorry! " + features.fault() + "\n", companion_status::not_written);
}
