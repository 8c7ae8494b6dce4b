#include "catalogue-conversions.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "json-text.h"
#include "shown-text.h"

namespace {

constexpr int longest_hipstr_unit = 9;

bool has_alignments(const results_header& header) {
  return header.format != one_per_line_format && header.print_mode == 2;
}

// The unit on the strand of the sequence: where there is an alignment, as the repeat begins, else as reported.
std::string given_unit(const results_repeat& repeat) {
  if (!repeat.alignment) return repeat.unit;
  std::string unit = repeat.alignment->unit;
  unit.erase(std::remove(unit.begin(), unit.end(), '-'), unit.end());
  return unit.substr(0, static_cast<std::size_t>(repeat.unit_length));
}

// Sequence, start from 0, end, as a prefix of a line.
std::string place_from_0(const std::string& sequence, const results_repeat& repeat, char before_start,
                         char before_end) {
  return sequence + before_start + std::to_string(repeat.start - 1) + before_end + std::to_string(repeat.end);
}

}  // namespace

bool CCatalogueConversion::begin(std::FILE* /*out*/, const results_header& header) {
  constexpr int on_either_strand = 2;
  return has_alignments(header) || header.report_unit_mode != on_either_strand ||
         refuse(
             "Sorry, these results give units in their normal form, which may lie on the other strand. Please "
             "search again\nwith --reportUnit 0, or with alignments (formats 0 and 1, --printRepeatSeqMode 2).\n");
}

bool CCatalogueConversion::begin_sequence(std::FILE* /*out*/, const results_sequence& sequence) {
  const std::string_view name = plain_name(sequence.name);
  if (!is_bed_name(name) || name.find_first_of(forbidden_bytes) != std::string_view::npos) {
    return refuse(unsuited_name(sequence, format));
  }
  return names.begin_sequence(sequence) || refuse(repeated_name(sequence));
}

bool CCatalogueConversion::add(std::FILE* out, const results_repeat& repeat) {
  return add_locus(out, repeat, names.next(repeat), given_unit(repeat));
}

bool CTrgtConversion::add_locus(std::FILE* out, const results_repeat& repeat, const std::string& name,
                                const std::string& unit) {
  write(out,
        place_from_0(sequence(), repeat, '\t', '\t') + "\tID=" + name + ";MOTIFS=" + unit + ";STRUC=(" + unit + ")n\n");
  return true;
}

bool CHipstrConversion::add_locus(std::FILE* out, const results_repeat& repeat, const std::string& name,
                                  const std::string& unit) {
  if (repeat.unit_length > longest_hipstr_unit) {
    return refuse("Sorry, the repeat " + shown(name) + " has a unit of " + std::to_string(repeat.unit_length) +
                  " symbols, and HipSTR takes up to " + std::to_string(longest_hipstr_unit) +
                  ". Please search again with -U 9.\n");
  }
  std::string line = sequence() + '\t' + std::to_string(repeat.start) + '\t' + std::to_string(repeat.end) + '\t' +
                     std::to_string(repeat.unit_length) + '\t';
  append_fixed(line, static_cast<double>(repeat.copy_number()), 3);
  write(out, line + '\t' + name + '_' + unit + '\n');
  return true;
}

bool CExpansionHunterConversion::add_locus(std::FILE* out, const results_repeat& repeat, const std::string& name,
                                           const std::string& unit) {
  const nlohmann::ordered_json locus = {{"LocusId", as_utf8(name)},
                                        {"LocusStructure", '(' + unit + ")*"},
                                        {"ReferenceRegion", as_utf8(place_from_0(sequence(), repeat, ':', '-'))},
                                        {"VariantType", "Repeat"}};
  write(out, (has_loci ? ",\n" : "[\n") + locus.dump());
  has_loci = true;
  return true;
}

bool CExpansionHunterConversion::finish(std::FILE* out) {
  write(out, has_loci ? "\n]\n" : "[]\n");
  return true;
}
