#include "CResultsReader.h"

#include <string_view>
#include <utility>

#include "CDnaString.h"
#include "CTextScanner.h"
#include "results-header.h"
#include "results-lines.h"
#include "results-texts.h"
#include "shown-text.h"

namespace {

constexpr std::string_view closing_line = closing_line_of_run(quarvo_format);

std::string name_of(std::string_view full_name) { return std::string(full_name.substr(0, full_name.find(' '))); }

void set_normal_form(results_repeat& repeat) {
  CDnaString unit;
  CDnaString form;
  normal_form_workspace work;
  unit.assign(repeat.unit.data(), repeat.unit.data() + repeat.unit.size());
  set_to_normal_form(form, unit, work);
  repeat.normal_form.assign(form.buffer, form.length);
}

}  // namespace

bool CResultsReader::open(const std::string& name) {
  file_name = name;
  lines = std::make_unique<CLineReader>();
  its_error = results_error();
  its_sequence = results_sequence();
  is_in_sequence = is_at_end = has_waiting_repeat = false;
  if (!lines->open(name)) {
    its_error = {results_error::kind_type::not_opened, "It cannot be opened: " + lines->error() + ".\n"};
    return false;
  }
  its_error = read_results_header(*lines, its_header);
  return !its_error;
}

CResultsReader::item CResultsReader::next() {
  if (its_error) return item::failed;
  if (is_at_end) return item::end;
  if (has_waiting_repeat) {
    has_waiting_repeat = false;
    return checked_repeat();
  }
  if (!next_line()) return item::failed;
  if (!its_header.names_every_sequence()) return next_table_line();
  return is_in_sequence ? next_inside_sequence() : next_outside_sequence();
}

std::string CResultsReader::error_text() const {
  return "Sorry! These results cannot be used:\n   \"" + shown(file_name) + "\"\n" + its_error.text;
}

CResultsReader::item CResultsReader::fail(results_error what) {
  its_error = std::move(what);
  return item::failed;
}

CResultsReader::item CResultsReader::fail_here(std::string_view expected) {
  return fail(unexpected_line(*lines, std::string(expected)));
}

bool CResultsReader::holds_here(bool condition, std::string_view expected) {
  if (!condition) fail_here(expected);
  return condition;
}

bool CResultsReader::next_line() {
  switch (lines->next()) {
    case CLineReader::outcome::line:
      if (!lines->is_cut()) return true;
      [[fallthrough]];
    case CLineReader::outcome::end_of_file:
      fail(unexpected_end(*lines));
      return false;
    default:
      fail(read_failure(*lines));
      return false;
  }
}

CResultsReader::item CResultsReader::next_outside_sequence() {
  if (lines->text() == closing_line) return finish();
  if (!(its_header.format == one_per_line_format ? begin_commented_block() : begin_block())) return item::failed;
  begin_sequence();
  is_in_sequence = true;
  return item::sequence;
}

CResultsReader::item CResultsReader::next_inside_sequence() {
  if (lines->text() == closing_line_here) {
    is_in_sequence = false;
    return next();
  }
  if (its_header.format == one_per_line_format) {
    std::string name;
    if (!parse_table_line(lines->text(), its_header, name, its_repeat) || name != its_sequence.name) {
      return fail_here("a repeat of this sequence, or its closing line,");
    }
  } else if (!read_repeat()) {
    return item::failed;
  }
  return checked_repeat();
}

CResultsReader::item CResultsReader::finish() {
  switch (lines->next()) {
    case CLineReader::outcome::end_of_file:
      is_at_end = true;
      return item::end;
    case CLineReader::outcome::line:
      return fail({results_error::kind_type::not_results,
                   "At line " + std::to_string(lines->number()) +
                       ", the file goes on after its closing line. Results of several runs are read one by one.\n"});
    default:
      return fail(read_failure(*lines));
  }
}

bool CResultsReader::read_length(CTextScanner& scanner) {
  int& length = its_sequence.length.emplace();
  return scanner.padded_number(length) && scanner.at_end() && length >= 0;
}

// ">full name" and "sequence length: n".
bool CResultsReader::begin_block() {
  CTextScanner opening(lines->text());
  if (!holds_here(opening.literal(name_label), "a sequence, or the closing line,")) return false;
  its_sequence.full_name = opening.remainder();
  if (!next_line()) return false;
  CTextScanner scanner(lines->text());
  if (!holds_here(scanner.literal(length_label) && read_length(scanner), "the length of the sequence")) return false;
  its_sequence.name = name_of(*its_sequence.full_name);
  closing_line_here = closing_line_of_sequence(*its_sequence.full_name);
  return true;
}

// "# Full sequence name:", "#>full name" and "##sequence-region name 1 n".
bool CResultsReader::begin_commented_block() {
  if (!holds_here(lines->text() == name_comment_title, "a sequence, or the closing line,") || !next_line())
    return false;
  CTextScanner opening(lines->text());
  if (!holds_here(opening.literal(name_comment_label), "the name of the sequence")) return false;
  its_sequence.full_name = opening.remainder();
  if (!next_line()) return false;
  const std::string_view region = lines->text();
  constexpr std::string_view label = region_label;
  constexpr std::string_view begin = region_begin;
  const std::size_t name_end = region.rfind(begin);
  const bool is_region = region.starts_with(label) && name_end != std::string_view::npos && name_end >= label.size();
  CTextScanner length(is_region ? region.substr(name_end + begin.size()) : "");
  const bool is_padded = length.remainder().starts_with(' ');
  if (!holds_here(!is_padded && read_length(length), "the region of the sequence")) return false;
  // A file that ends in a lone '>' has a last record without a name, which is told under the name before it.
  const std::string_view name = region.substr(label.size(), name_end - label.size());
  closing_line_here = closing_line_of_sequence(name);
  its_sequence.name = name_of(*its_sequence.full_name);
  return holds_here(name == its_sequence.name || its_sequence.full_name->empty(),
                    "the region of the sequence named before");
}

void CResultsReader::begin_sequence() {
  ++its_sequence.ordinal;
  last_start = last_end = 0;
}

// A repeat of formats 0 and 1 with all its lines, of which the first has been read.
bool CResultsReader::read_repeat() {
  if (!holds_here(parse_repeat_line(lines->text(), its_header, its_repeat),
                  "a repeat of this sequence, or its closing line,")) {
    return false;
  }
  if (its_header.format == extended_quarvo_format) {
    if (!next_line()) return false;
    if (!holds_here(parse_edit_line(lines->text(), its_repeat), "the edits of the repeat")) return false;
  }
  if (its_header.print_mode == print_no_sequence) return true;
  if (its_header.print_mode == print_alignment) return read_alignment();
  return next_line() &&
         holds_here(parse_sequence_line(lines->text(), its_header, its_repeat), "the sequence of the repeat");
}

bool CResultsReader::read_alignment() {
  if (!next_line()) return false;
  const std::string sequence(lines->text());
  if (!next_line()) return false;
  const std::string markers(lines->text());
  if (!next_line()) return false;
  return holds_here(parse_alignment(sequence, markers, lines->text(), its_header, its_repeat),
                    "the last of the three lines of an alignment");
}

// Format 3 without sequence comments: a sequence is there when its first repeat is.
CResultsReader::item CResultsReader::next_table_line() {
  if (lines->text() == closing_line) return finish();
  std::string name;
  if (!parse_table_line(lines->text(), its_header, name, its_repeat)) {
    return fail_here("a repeat, or the closing line,");
  }
  if (its_sequence.ordinal != 0 && name == its_sequence.name && is_in_order()) return checked_repeat();
  its_sequence.name = name;
  begin_sequence();
  has_waiting_repeat = true;
  return item::sequence;
}

bool CResultsReader::is_in_order() const {
  return std::pair(last_start, last_end) <= std::pair(its_repeat.start, its_repeat.end);
}

CResultsReader::item CResultsReader::checked_repeat() {
  if (!is_in_order()) return fail_here("a repeat after the one before it");
  if (its_sequence.length && its_repeat.end > *its_sequence.length) return fail_here("a repeat inside its sequence");
  last_start = its_repeat.start;
  last_end = its_repeat.end;
  set_normal_form(its_repeat);
  return item::repeat;
}
