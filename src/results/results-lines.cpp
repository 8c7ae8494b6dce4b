#include "results-lines.h"

#include <algorithm>
#include <array>

#include "CTextScanner.h"

namespace {

constexpr std::array<std::string_view, 6> repeat_names{"mononucleotide",  "dinucleotide",    "trinucleotide",
                                                       "tetranucleotide", "pentanucleotide", "hexanucleotide"};

bool is_dna(std::string_view text) { return text.find_first_not_of("ACGTN") == std::string_view::npos; }

bool parse_repeat_name(CTextScanner& scanner, int& unit_length) {
  scanner.skip_blanks();
  for (std::size_t i = 0; i != repeat_names.size(); ++i) {
    if (!scanner.literal(repeat_names[i])) continue;
    unit_length = static_cast<int>(i) + 1;
    return true;
  }
  return scanner.padded_number(unit_length, "-nucleotide") && unit_length > static_cast<int>(repeat_names.size());
}

bool parse_count(CTextScanner& scanner, std::optional<int>& count, std::string_view behind) {
  return scanner.padded_number(count.emplace(), behind);
}

bool parse_edit_counts(CTextScanner& scanner, bool Ns_are_missense, results_repeat& repeat) {
  return parse_count(scanner, repeat.mismatches, " mis | ") && parse_count(scanner, repeat.insertions, " ins | ") &&
         parse_count(scanner, repeat.deletions, " del | ") &&
         (Ns_are_missense || parse_count(scanner, repeat.Ns, " N | "));
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

bool set_sequence(std::string_view text, results_repeat& repeat) {
  if (text.size() != static_cast<std::size_t>(repeat.span) || !is_dna(text)) return false;
  repeat.sequence.emplace(text);
  return true;
}

bool set_flanks(std::string_view left, std::string_view right, const results_header& header, results_repeat& repeat) {
  const auto longest = static_cast<std::size_t>(header.flanking);
  if (left.size() > longest || right.size() > longest || !is_dna(left) || !is_dna(right)) return false;
  repeat.left_flank.emplace(left);
  repeat.right_flank.emplace(right);
  return true;
}

// Cuts "left:middle:right" at its colons. Returns false unless there are exactly two.
struct framed_text {
  std::string_view left;
  std::string_view middle;
  std::string_view right;

  bool cut(std::string_view text) {
    const std::size_t first = text.find(':');
    const std::size_t last = text.rfind(':');
    if (first == last || text.find(':', first + 1) != last) return false;
    left = text.substr(0, first);
    middle = text.substr(first + 1, last - first - 1);
    right = text.substr(last + 1);
    return true;
  }
};

// Cuts the text behind the last `n` tabs into fields; what stands before them goes to `rest`.
template <std::size_t n>
bool cut_fields(std::string_view text, std::array<std::string_view, n>& fields, std::size_t count,
                std::string_view& rest) {
  for (std::size_t i = count; i-- > 0;) {
    const std::size_t tab = text.rfind('\t');
    if (tab == std::string_view::npos) return false;
    fields[i] = text.substr(tab + 1);
    text = text.substr(0, tab);
  }
  rest = text;
  return true;
}

template <typename Number>
bool parse_field(std::string_view field, Number& value) {
  CTextScanner scanner(field);
  return scanner.padded_number(value) && scanner.at_end();
}

}  // namespace

bool parse_repeat_line(std::string_view line, const results_header& header, results_repeat& repeat) {
  forget_edits(repeat);
  forget_sequence(repeat);
  CTextScanner scanner(line);
  if (!parse_repeat_name(scanner, repeat.unit_length) || !scanner.literal(" ")) return false;
  if (!scanner.padded_number(repeat.start, " : ") || !scanner.padded_number(repeat.end, " | ")) return false;
  if (!scanner.padded_number(repeat.span, " bp | ") || !scanner.padded_number(repeat.length, " BP | ")) return false;
  if (!scanner.padded_number(repeat.score, " pt | ") || !scanner.padded_number(repeat.perfection, " % | "))
    return false;
  if (header.format == 1) {
    if (!parse_edit_counts(scanner, header.Ns_are_missense, repeat) || !scanner.literal(" ")) return false;
  }
  if (!scanner.literal("unit ")) return false;
  repeat.unit = scanner.remainder();
  return is_consistent(repeat);
}

bool parse_edit_line(std::string_view line, results_repeat& repeat) {
  CTextScanner scanner(line);
  if (!scanner.literal("Missense: ")) return false;
  auto& edits = repeat.edits.emplace();
  while (!scanner.at_end()) {
    results_edit edit{};
    if (!scanner.literal("(") || !scanner.padded_number(edit.position, ",")) return false;
    for (const std::string_view kind : {"M", "I", "D"}) {
      if (edit.kind == 0 && scanner.literal(kind)) edit.kind = kind[0];
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
  if (markers.find_first_not_of("|* ") != std::string_view::npos) return false;
  if (unit.find_first_not_of("ACGTN-") != std::string_view::npos) return false;
  std::string plain(sequence);
  std::erase(plain, '-');
  if (!set_sequence(plain, repeat)) return false;
  repeat.alignment.emplace(
      results_repeat::alignment_lines{std::string(sequence), std::string(markers), std::string(unit)});
  return true;
}

bool parse_table_line(std::string_view line, const results_header& header, std::string& name, results_repeat& repeat) {
  forget_edits(repeat);
  forget_sequence(repeat);
  const bool has_flanks = header.flanking != 0;
  std::array<std::string_view, 15> fields;
  std::string_view rest;
  // The name may hold tabs itself; nothing behind it does.
  if (!cut_fields(line, fields, has_flanks ? 15 : 13, rest)) return false;
  double copy_number = 0;
  if (!parse_field(fields[0], repeat.unit_length) || !parse_field(fields[1], repeat.perfection)) return false;
  if (!parse_field(fields[2], repeat.start) || !parse_field(fields[3], repeat.end)) return false;
  if (!parse_field(fields[4], repeat.span) || !parse_field(fields[5], copy_number)) return false;
  if (!parse_field(fields[6], repeat.score) || !parse_field(fields[7], repeat.mismatches.emplace())) return false;
  if (!parse_field(fields[8], repeat.insertions.emplace()) || !parse_field(fields[9], repeat.deletions.emplace())) {
    return false;
  }
  if (header.Ns_are_missense ? fields[10] != "." : !parse_field(fields[10], repeat.Ns.emplace())) return false;
  name = rest;
  repeat.unit = fields[11];
  repeat.length = repeat.span - *repeat.insertions + *repeat.deletions;
  return is_consistent(repeat) && set_sequence(fields[12], repeat) &&
         (!has_flanks || set_flanks(fields[13], fields[14], header, repeat));
}
