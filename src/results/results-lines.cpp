#include "results-lines.h"

#include <algorithm>
#include <array>

#include "CTextScanner.h"
#include "repeat-columns.h"
#include "results-texts.h"

namespace {

bool is_dna(std::string_view text) { return text.find_first_not_of("ACGTN") == std::string_view::npos; }

bool parse_repeat_name(CTextScanner& scanner, int& unit_length) {
  constexpr int names = static_cast<int>(REPEAT_NAMES.size());
  scanner.skip_blanks();
  for (unit_length = 1; unit_length != names; ++unit_length) {
    if (scanner.literal(REPEAT_NAMES[static_cast<std::size_t>(unit_length)])) return true;
  }
  return scanner.padded_number(unit_length, repeat_name_suffix) && unit_length >= names;
}

void forget_edits(results_repeat& repeat) {
  repeat.mismatches.reset();
  repeat.insertions.reset();
  repeat.deletions.reset();
  repeat.Ns.reset();
  repeat.edits.reset();
}

void forget_sequence(results_repeat& repeat) {
  repeat.sequence.reset();
  repeat.left_flank.reset();
  repeat.right_flank.reset();
  repeat.alignment.reset();
}

// What the fields of one line must have in common.
bool is_consistent(const results_repeat& repeat) {
  if (repeat.start < 1 || repeat.end < repeat.start || repeat.span != repeat.end - repeat.start + 1) return false;
  if (repeat.unit_length < 1 || repeat.unit.size() != static_cast<std::size_t>(repeat.unit_length)) return false;
  if (!is_dna(repeat.unit)) return false;
  if (!repeat.mismatches) return true;
  if (*repeat.mismatches < 0 || *repeat.insertions < 0 || *repeat.deletions < 0) return false;
  return repeat.length == static_cast<long long>(repeat.span) - *repeat.insertions + *repeat.deletions;
}

std::string without_gaps(std::string_view text) {
  std::string plain(text);
  std::erase(plain, gap_mark);
  return plain;
}

bool set_sequence(std::string_view text, results_repeat& repeat) {
  if (text.size() != static_cast<std::size_t>(repeat.span) || !is_dna(text)) return false;
  repeat.sequence.emplace(text);
  return true;
}

bool set_flank(std::string_view text, const results_header& header, std::optional<std::string>& flank) {
  flank.emplace(text);
  return text.size() <= static_cast<std::size_t>(header.flanking) && is_dna(text);
}

bool set_flanks(std::string_view left, std::string_view right, const results_header& header, results_repeat& repeat) {
  return set_flank(left, header, repeat.left_flank) && set_flank(right, header, repeat.right_flank);
}

// The value of a column, which a text takes to the end of the line. A column stands after those that it depends on.
bool read_value(CTextScanner& scanner, repeat_field field, const results_header& header, results_repeat& repeat) {
  double copy_number = 0;
  switch (field) {
    case repeat_field::unit_name:
      return parse_repeat_name(scanner, repeat.unit_length);
    case repeat_field::unit_length:
      return scanner.padded_number(repeat.unit_length);
    case repeat_field::perfection:
      return scanner.padded_number(repeat.perfection);
    case repeat_field::start:
      return scanner.padded_number(repeat.start);
    case repeat_field::end:
      return scanner.padded_number(repeat.end);
    case repeat_field::span:
      return scanner.padded_number(repeat.span);
    case repeat_field::length:
      return scanner.padded_number(repeat.length);
    case repeat_field::copy_number:
      return scanner.padded_number(copy_number);
    case repeat_field::score:
      return scanner.padded_number(repeat.score);
    case repeat_field::mismatches:
      return scanner.padded_number(repeat.mismatches.emplace());
    case repeat_field::insertions:
      return scanner.padded_number(repeat.insertions.emplace());
    case repeat_field::deletions:
      return scanner.padded_number(repeat.deletions.emplace());
    case repeat_field::Ns:
      return header.Ns_are_missense ? scanner.literal(no_count) : scanner.padded_number(repeat.Ns.emplace());
    case repeat_field::unit:
      repeat.unit = scanner.take_remainder();
      return true;
    case repeat_field::symbols:
      return set_sequence(scanner.take_remainder(), repeat);
    case repeat_field::left_flank:
      return set_flank(scanner.take_remainder(), header, repeat.left_flank);
    case repeat_field::right_flank:
      return set_flank(scanner.take_remainder(), header, repeat.right_flank);
  }
  return false;
}

// Cuts "left:middle:right" at its colons. Returns false unless there are exactly two.
struct framed_text {
  std::string_view left;
  std::string_view middle;
  std::string_view right;

  bool cut(std::string_view text) {
    const std::size_t first = text.find(flank_mark);
    const std::size_t last = text.rfind(flank_mark);
    if (first == last || text.find(flank_mark, first + 1) != last) return false;
    left = text.substr(0, first);
    middle = text.substr(first + 1, last - first - 1);
    right = text.substr(last + 1);
    return true;
  }
};

// Reads the columns of a line of the table, all in one go, and its name, which may hold tabs itself; no value does.
bool read_table_values(std::string_view line, const results_header& header, std::string& name, results_repeat& repeat) {
  const repeat_layout layout = header.layout();
  std::array<std::string_view, table_columns.size()> values;
  for (std::size_t i = table_columns.size(); i-- > 0;) {
    if (!layout.has(table_columns[i].presence)) continue;
    const std::size_t separator = line.rfind(table_separator);
    if (separator == std::string_view::npos) return false;
    values[i] = line.substr(separator + 1);
    line = line.substr(0, separator);
  }
  name = line;
  for (std::size_t i = 0; i != table_columns.size(); ++i) {
    if (!layout.has(table_columns[i].presence)) continue;
    CTextScanner scanner(values[i]);
    if (!read_value(scanner, table_columns[i].field, header, repeat) || !scanner.at_end()) return false;
  }
  return true;
}

}  // namespace

bool parse_repeat_line(std::string_view line, const results_header& header, results_repeat& repeat) {
  forget_edits(repeat);
  forget_sequence(repeat);
  const repeat_layout layout = header.layout();
  CTextScanner scanner(line);
  for (const repeat_column& column : line_columns) {
    if (!layout.has(column.presence)) continue;
    if (column.field == repeat_field::unit && !scanner.literal(unit_label(layout))) return false;
    if (!read_value(scanner, column.field, header, repeat) || !scanner.literal(column.after)) return false;
  }
  return is_consistent(repeat);
}

bool parse_edit_line(std::string_view line, results_repeat& repeat) {
  CTextScanner scanner(line);
  if (!scanner.literal(edits_label)) return false;
  auto& edits = repeat.edits.emplace();
  while (!scanner.at_end()) {
    results_edit edit{};
    if (!scanner.literal("(") || !scanner.padded_number(edit.position, ",")) return false;
    for (const char kind : {mismatch_kind, insertion_kind, deletion_kind}) {
      if (edit.kind == 0 && scanner.literal({&kind, 1})) edit.kind = kind;
    }
    if (edit.kind == 0 || !scanner.literal("),")) return false;
    edits.push_back(edit);
  }
  return true;
}

bool parse_sequence_line(std::string_view line, const results_header& header, results_repeat& repeat) {
  if (header.flanking == 0) return set_sequence(line, repeat);
  framed_text parts;
  return parts.cut(line) && set_sequence(parts.middle, repeat) && set_flanks(parts.left, parts.right, header, repeat);
}

bool parse_alignment(std::string_view sequence, std::string_view markers, std::string_view unit,
                     const results_header& header, results_repeat& repeat) {
  if (markers.size() != sequence.size() || unit.size() != sequence.size()) return false;
  if (header.flanking != 0) {
    framed_text parts;
    if (!parts.cut(sequence) || !set_flanks(parts.left, parts.right, header, repeat)) return false;
    const std::size_t begin = parts.left.size() + 1;
    const std::size_t size = parts.middle.size();
    sequence = parts.middle;
    markers = markers.substr(begin, size);
    unit = unit.substr(begin, size);
  }
  constexpr std::array marks{match_mark, N_mark, edit_mark};
  if (markers.find_first_not_of({marks.data(), marks.size()}) != std::string_view::npos) return false;
  if (!is_dna(without_gaps(unit))) return false;
  const std::string plain = without_gaps(sequence);
  if (!set_sequence(plain, repeat)) return false;
  repeat.alignment.emplace(
      results_repeat::alignment_lines{std::string(sequence), std::string(markers), std::string(unit)});
  return true;
}

bool parse_table_line(std::string_view line, const results_header& header, std::string& name, results_repeat& repeat) {
  forget_edits(repeat);
  forget_sequence(repeat);
  if (!read_table_values(line, header, name, repeat)) return false;
  repeat.length = repeat.span - *repeat.insertions + *repeat.deletions;
  return is_consistent(repeat);
}
