// One repeat in the five output formats, and the block of sequence or alignment below it.

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "CDnaString.h"
#include "CReportText.h"
#include "CSequence_Mol.h"
#include "Csat-lines.h"
#include "Csat.h"
#include "alignment-lines.h"
#include "global-types-and-parameters.h"
#include "repeat-columns.h"
#include "results-texts.h"
#include "unit-tables.h"

namespace {

// The longest unit that a GFF attribute carries.
constexpr int longest_unit_in_gff = 50;

// True when the unit is a repetition of a shorter one: cut into p blocks for a prime p, all blocks are equal.
bool is_periodic_as_is(const faststring& unit) {
  for (const int p : primeFactors[unit.length]) {
    if (p == 0) return false;
    const unsigned block = unit.length / static_cast<unsigned>(p);
    if (std::memcmp(unit.buffer, unit.buffer + block, unit.length - block) == 0) return true;
  }
  return false;
}

// Texts that a report needs, kept from repeat to repeat for their memory.
struct report_workspace {
  CDnaString unit;
  CDnaString reported_unit;
  normal_form_workspace normal_form;
  CReportText text;
  alignment_lines alignment;
};

// Brings the unit into the form in which units are reported. Returns true when it repeats a shorter unit.
bool set_to_reported_unit(report_workspace& work, const Csat& sat) {
  work.unit.assign(sat.unit_begin, sat.unit_end);
  switch (global_report_unit_mode) {
    case unit_as_is:
      work.reported_unit.assign(sat.unit_begin, sat.unit_end);
      return is_periodic_as_is(work.unit);
    case unit_normal_form:
      return work.reported_unit.setToMinAlphaRepModCyclicPermOf(work.unit);
    default:
      return set_to_normal_form(work.reported_unit, work.unit, work.normal_form);
  }
}

// The name as a text that a NUL ends, without writing one behind it: several threads may report of one record.
CReportText& name_of(CReportText& text, const CSequence_Mol& seq) {
  const faststring& name = seq.short_name;
  return name.length == 0 ? text : text.stretch(name.buffer, name.buffer + strnlen(name.buffer, name.length));
}

constexpr int longest_named_unit = static_cast<int>(REPEAT_NAMES.size()) - 1;

// One repeat with everything that its report derives from it.
class CSatReport {
 public:
  CSatReport(const Csat& repeat, CSequence_Mol& record, float its_perfection, report_workspace& its_work)
      : sat(repeat),
        seq(record),
        perfection(its_perfection),
        unit(its_work.reported_unit.c_str()),
        work(its_work),
        start(static_cast<int>(sat.pos_left - seq.symbols.buffer) + 1),
        end(static_cast<int>(sat.pos_right - seq.symbols.buffer)) {
    const auto flanking = static_cast<std::ptrdiff_t>(global_flanking);
    const char* const seq_end = seq.symbols.buffer + seq.symbols.length;
    left_flank = sat.pos_left - std::min(flanking, sat.pos_left - seq.symbols.buffer);
    right_flank_end = sat.pos_right + std::min(flanking, seq_end - sat.pos_right);
  }

  void write(std::FILE* out) {
    switch (global_print_sat_mode) {
      case quarvo_format:
      case extended_quarvo_format:
        write_lines(out);
        break;
      case gff_format:
        write_gff(out);
        break;
      case one_per_line_format:
        write_one_per_line(out);
        break;
      case fasta_format:
        write_fasta(out);
        break;
      default:
        write_unused(out);
    }
  }

 private:
  const Csat& sat;
  CSequence_Mol& seq;
  float perfection;  // percent
  const char* unit;
  report_workspace& work;
  int start;  // 1-based, inclusive
  int end;    // 1-based, inclusive
  const char* left_flank;
  const char* right_flank_end;

  float repeat_number() const { return static_cast<float>(sat.length()) / static_cast<float>(sat.unit_length()); }

  repeat_layout layout() const { return {global_print_sat_mode, global_treat_Ns_as_missense, global_flanking > 0}; }

  [[gnu::always_inline]] void append(CReportText& line, const repeat_column& column) const {
    switch (column.field) {
      case repeat_field::unit_name:
        append_repeat_name(line, sat.unit_length());
        break;
      case repeat_field::unit_length:
        line.number(sat.unit_length(), column.width);
        break;
      case repeat_field::perfection:
        line.fixed(perfection, 3, column.width);
        break;
      case repeat_field::start:
        line.number(start, column.width);
        break;
      case repeat_field::end:
        line.number(end, column.width);
        break;
      case repeat_field::span:
        line.number(sat.span(), column.width);
        break;
      case repeat_field::length:
        line.number(sat.length(), column.width);
        break;
      case repeat_field::copy_number:
        line.fixed(repeat_number(), 3, column.width);
        break;
      case repeat_field::score:
        line.number(sat.score, column.width);
        break;
      case repeat_field::mismatches:
        line.number(sat.mismatches, column.width);
        break;
      case repeat_field::insertions:
        line.number(sat.insertions, column.width);
        break;
      case repeat_field::deletions:
        line.number(sat.deletions, column.width);
        break;
      case repeat_field::Ns:
        global_treat_Ns_as_missense ? line.text(no_count) : line.number(sat.number_of_Ns, column.width);
        break;
      case repeat_field::unit:
        line.text(unit);
        break;
      case repeat_field::symbols:
        line.stretch(sat.pos_left, sat.pos_right);
        break;
      case repeat_field::left_flank:
        line.stretch(left_flank, sat.pos_left);
        break;
      case repeat_field::right_flank:
        line.stretch(sat.pos_right, right_flank_end);
        break;
    }
  }

  // Written out for each column, as it is known when this is compiled: results may hold more numbers than symbols.
  template <std::size_t i>
  [[gnu::always_inline]] void append_line_column(CReportText& line, const repeat_layout& its_layout) const {
    constexpr const repeat_column& column = line_columns[i];
    if (!its_layout.has(column.presence)) return;
    if (column.field == repeat_field::unit) line.text(unit_label(its_layout));
    append(line, column);
    line.text(column.after);
  }

  void write_lines(std::FILE* out) {
    const repeat_layout its_layout = layout();
    CReportText& line = work.text.clear();
    [&]<std::size_t... i>(std::index_sequence<i...>) { (append_line_column<i>(line, its_layout), ...); }
    (std::make_index_sequence<line_columns.size()>{});
    line.symbol('\n');
    if (its_layout.is_extended()) append_missense(line);
    append_sequence_block(line);
    line.write_to(out);
  }

  void append_missense(CReportText& line) const {
    line.text(edits_label);
    for (const auto& entry : sat.missense_entries()) {
      line.symbol('(').number(static_cast<int>(entry.position - sat.pos_left) + 1);
      line.symbol(',').symbol(entry.symbol).text("),");
    }
    line.symbol('\n');
  }

  void write_gff(std::FILE* out) {
    CReportText& line = work.text.clear();
    name_of(line, seq).text("\tQuarvo\ttandem-repeat\t").number(start).symbol('\t').number(end);
    line.symbol('\t').fixed(perfection, 2).text("\t.\t.\tName=\"repeat_region ").number(start).symbol('-').number(end);
    line.text(" unit_size ").number(sat.unit_length()).text(" repeat_number ").fixed(repeat_number(), 3);
    line.text(" perfection ").fixed(perfection, 3).text(" unit ");
    line.text(sat.unit_length() > longest_unit_in_gff ? "." : unit).text("\"\n");
    line.write_to(out);
  }

  void write_one_per_line(std::FILE* out) {
    const repeat_layout its_layout = layout();
    CReportText& line = work.text.clear();
    name_of(line, seq);
    for (const repeat_column& column : table_columns) {
      if (its_layout.has(column.presence)) append(line.symbol(table_separator), column);
    }
    line.symbol('\n').write_to(out);
  }

  void write_fasta(std::FILE* out) {
    CReportText& lines = work.text.clear();
    name_of(lines.symbol('>'), seq).symbol(' ');
    lines.number(static_cast<int>(sat.pos_left - left_flank) + 1).symbol(' ').number(sat.span()).symbol(' ');
    lines.number(sat.unit_length()).symbol(' ').number(start).symbol(' ').number(end).symbol(' ');
    lines.fixed(repeat_number(), 3).symbol(' ').number(sat.score).symbol(' ').fixed(perfection, 3).symbol(' ');
    lines.number(sat.mismatches).symbol(' ').number(sat.insertions).symbol(' ').number(sat.deletions).symbol('\n');
    lines.stretch(left_flank, right_flank_end).symbol('\n').write_to(out);
  }

  void write_unused(std::FILE* out) {
    if (!write_unused_format(out, sat, start, end, perfection, unit)) return;
    CReportText& block = work.text.clear();
    append_sequence_block(block);
    block.write_to(out);
  }

  void append_sequence_block(CReportText& block) const {
    if (global_print_sat_seq_mode == print_sequence) append_sequence(block);
    if (global_print_sat_seq_mode == print_alignment) append_alignment(block);
  }

  void append_sequence(CReportText& block) const {
    const bool framed = global_flanking > 0;
    if (framed) block.stretch(left_flank, sat.pos_left).symbol(flank_mark);
    block.stretch(sat.pos_left, sat.pos_right);
    if (framed) block.symbol(flank_mark).stretch(sat.pos_right, right_flank_end);
    block.symbol('\n');
  }

  void append_alignment(CReportText& block) const;
};

void CSatReport::append_alignment(CReportText& block) const {
  alignment_lines& lines = work.alignment;
  lines.clear();
  if (global_flanking > 0) {
    lines.flank(left_flank, sat.pos_left);
    lines.column(flank_mark, ' ', ' ');
  }
  align(lines, sat);
  if (global_flanking > 0) {
    lines.column(flank_mark, ' ', ' ');
    lines.flank(sat.pos_right, right_flank_end);
  }
  for (const std::string* line : {&lines.sequence, &lines.markers, &lines.unit}) {
    block.stretch(line->data(), line->data() + line->size()).symbol('\n');
  }
}

}  // namespace

void append_repeat_name(CReportText& text, int unit_length) {
  if (unit_length <= longest_named_unit) {
    text.text_right_aligned(REPEAT_NAMES[static_cast<std::size_t>(unit_length)], 16);
  } else {
    text.number(unit_length, 5).text(repeat_name_suffix);
  }
}

bool Csat::report_sat(std::FILE* out, CSequence_Mol& seq) const {
  const float its_perfection = perfection();
  if (!is_reported_perfection(its_perfection)) return false;
  // Left to the system at the end: the C library ends a process that has no memory to note a thread's destructor.
  thread_local report_workspace* work = nullptr;
  if (work == nullptr) work = new report_workspace;
  if (set_to_reported_unit(*work, *this)) return false;
  CSatReport(*this, seq, its_perfection, *work).write(out);
  return true;
}
