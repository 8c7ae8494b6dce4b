// One repeat in the five output formats, and the block of sequence or alignment below it.

#include <algorithm>
#include <cstdlib>

#include "CDnaString.h"
#include "CReportText.h"
#include "CSequence_Mol.h"
#include "Csat.h"
#include "global-types-and-parameters.h"
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
  CDnaString reversed;
  CDnaString smallest_of_unit;
  CDnaString reported_unit;
  CReportText text;
};

// The unit and the smaller of the smallest rotations of it and of its reverse complement.
bool set_to_normal_form_with_complement(report_workspace& work) {
  CDnaString& result = work.reported_unit;
  CDnaString& other = work.smallest_of_unit;
  work.reversed.set_to_reverse_complement_of(work.unit);
  const bool periodic = result.setToMinAlphaRepModCyclicPermOf(work.reversed);
  other.setToMinAlphaRepModCyclicPermOf(work.unit);
  if (std::strcmp(result.c_str(), other.c_str()) > 0) result.assign(other.buffer, other.buffer + other.length);
  return periodic;
}

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
      return set_to_normal_form_with_complement(work);
  }
}

// One repeat with everything that its report derives from it.
class CSatReport {
 public:
  CSatReport(const Csat& repeat, CSequence_Mol& record, float its_perfection, report_workspace& work)
      : sat(repeat),
        seq(record),
        perfection(its_perfection),
        unit(work.reported_unit.c_str()),
        its_text(work.text),
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
        write_quarvo_format(out, false);
        break;
      case extended_quarvo_format:
        write_quarvo_format(out, true);
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
      case compact_format:
        write_compact(out);
        break;
      default:
        std::fputs("Internal error. Unknown output format. Please report this bug", out);
    }
  }

 private:
  const Csat& sat;
  CSequence_Mol& seq;
  float perfection;  // percent
  const char* unit;
  CReportText& its_text;
  int start;  // 1-based, inclusive
  int end;    // 1-based, inclusive
  const char* left_flank;
  const char* right_flank_end;

  float repeat_number() const { return static_cast<float>(sat.length()) / static_cast<float>(sat.unit_length()); }

  void write_quarvo_format(std::FILE* out, bool extended) {
    CReportText& line = its_text.clear();
    append_repeat_name(line);
    line.symbol(' ').number(start, 9).text(" : ").number(end, 9).text(" | ").number(sat.span(), 6).text(" bp | ");
    line.number(sat.length(), 6).text(" BP | ").number(sat.score, 6).text(" pt | ");
    line.fixed(perfection, 3, 7).text(" % | ");
    if (extended) append_edit_counts(line);
    line.text(extended ? " unit " : "unit ").text(unit).symbol('\n');
    if (extended) append_missense(line);
    append_sequence_block(line);
    line.write_to(out);
  }

  // As print_repeat_name does.
  void append_repeat_name(CReportText& line) const {
    const int L = sat.unit_length();
    if (L < 7) {
      line.text_right_aligned(sat.get_repeat_name(), 16);
    } else {
      line.number(L, 5).text("-nucleotide");
    }
  }

  void append_edit_counts(CReportText& line) const {
    line.number(sat.mismatches, 3).text(" mis | ").number(sat.insertions, 3).text(" ins | ");
    line.number(sat.deletions, 3).text(" del | ");
    if (!global_treat_Ns_as_missense) line.number(sat.number_of_Ns, 3).text(" N | ");
  }

  void append_missense(CReportText& line) const {
    line.text("Missense: ");
    for (const auto& entry : sat.missense_entries()) {
      line.symbol('(').number(static_cast<int>(entry.position - sat.pos_left) + 1);
      line.symbol(',').symbol(entry.symbol).text("),");
    }
    line.symbol('\n');
  }

  void write_gff(std::FILE* out) {
    CReportText& line = its_text.clear();
    line.text(seq.short_name.c_str()).text("\tQuarvo\ttandem-repeat\t").number(start).symbol('\t').number(end);
    line.symbol('\t').fixed(perfection, 2).text("\t.\t.\tName=\"repeat_region ").number(start).symbol('-').number(end);
    line.text(" unit_size ").number(sat.unit_length()).text(" repeat_number ").fixed(repeat_number(), 3);
    line.text(" perfection ").fixed(perfection, 3).text(" unit ");
    line.text(sat.unit_length() > longest_unit_in_gff ? "." : unit).text("\"\n");
    line.write_to(out);
  }

  void write_one_per_line(std::FILE* out) {
    CReportText& line = its_text.clear();
    line.text(seq.short_name.c_str()).symbol('\t').number(sat.unit_length()).symbol('\t').fixed(perfection, 3);
    line.symbol('\t').number(start).symbol('\t').number(end).symbol('\t').number(sat.span());
    line.symbol('\t').fixed(repeat_number(), 3, 7).symbol('\t').number(sat.score).symbol('\t').number(sat.mismatches);
    line.symbol('\t').number(sat.insertions).symbol('\t').number(sat.deletions).symbol('\t');
    if (global_treat_Ns_as_missense) {
      line.symbol('.');
    } else {
      line.number(sat.number_of_Ns);
    }
    line.symbol('\t').text(unit).symbol('\t').stretch(sat.pos_left, sat.pos_right);
    if (global_flanking > 0) {
      line.symbol('\t').stretch(left_flank, sat.pos_left).symbol('\t').stretch(sat.pos_right, right_flank_end);
    }
    line.symbol('\n').write_to(out);
  }

  void write_fasta(std::FILE* out) {
    CReportText& lines = its_text.clear();
    lines.symbol('>').text(seq.short_name.c_str()).symbol(' ');
    lines.number(static_cast<int>(sat.pos_left - left_flank) + 1).symbol(' ').number(sat.span()).symbol(' ');
    lines.number(sat.unit_length()).symbol(' ').number(start).symbol(' ').number(end).symbol(' ');
    lines.fixed(repeat_number(), 3).symbol(' ').number(sat.score).symbol(' ').fixed(perfection, 3).symbol(' ');
    lines.number(sat.mismatches).symbol(' ').number(sat.insertions).symbol(' ').number(sat.deletions).symbol('\n');
    lines.stretch(left_flank, right_flank_end).symbol('\n').write_to(out);
  }

  void write_compact(std::FILE* out) {
    CReportText& line = its_text.clear();
    line.text(sat.get_repeat_name()).symbol(' ').number(start).text(" : ").number(end);
    line.text(" -- length ").number(sat.length()).text(" score ").number(sat.score).text(" perfection ");
    line.number(static_cast<int>(static_cast<double>(perfection) + 0.5)).text(" unit ").text(unit).symbol('\n');
    line.write_to(out);
    std::fflush(out);
    CReportText& block = its_text.clear();
    append_sequence_block(block);
    block.write_to(out);
  }

  void append_sequence_block(CReportText& block) const {
    if (global_print_sat_seq_mode == print_sequence) append_sequence(block);
    if (global_print_sat_seq_mode == print_alignment) append_alignment(block);
  }

  void append_sequence(CReportText& block) const {
    const bool framed = global_flanking > 0;
    if (framed) block.stretch(left_flank, sat.pos_left).symbol(':');
    block.stretch(sat.pos_left, sat.pos_right);
    if (framed) block.symbol(':').stretch(sat.pos_right, right_flank_end);
    block.symbol('\n');
  }

  void append_alignment(CReportText& block) const;
};

// The three lines of an alignment: sequence, markers, unit.
class CAlignment {
 public:
  explicit CAlignment(std::size_t columns) {
    sequence_line.reserve(columns);
    marker_line.reserve(columns);
    unit_line.reserve(columns);
  }

  void column(char base, char marker, char unit_symbol) {
    sequence_line.push_back(base);
    marker_line.push_back(marker);
    unit_line.push_back(unit_symbol);
  }

  void flank(const char* begin, const char* end) {
    for (; begin != end; ++begin) column(*begin, ' ', ' ');
  }

  void append_to(CReportText& block) const {
    for (const std::string* line : {&sequence_line, &marker_line, &unit_line}) {
      block.stretch(line->data(), line->data() + line->size()).symbol('\n');
    }
  }

 private:
  std::string sequence_line;
  std::string marker_line;
  std::string unit_line;
};

// Walks the repeat with its unit, edit by edit. An edit that lies outside the repeat is never met, nor are those
// behind it in the list.
void align(CAlignment& alignment, const Csat& sat) {
  const char* unit = sat.unit_successor(sat.bwd_unit_cursor);
  const auto edits = sat.missense_entries();
  auto edit = edits.begin();
  for (const char* base = sat.pos_left; base != sat.pos_right;) {
    if (edit == edits.end() || base != edit->position) {
      alignment.column(*base, *base == 'N' ? '*' : '|', *unit);
      ++base;
      unit = sat.unit_successor(unit);
      continue;
    }
    switch (edit->symbol) {
      case 'M':
        alignment.column(*base++, ' ', *unit);
        unit = sat.unit_successor(unit);
        break;
      case 'I':
        alignment.column(*base++, ' ', '-');
        break;
      default:
        alignment.column('-', ' ', *unit);
        unit = sat.unit_successor(unit);
    }
    ++edit;
  }
}

void CSatReport::append_alignment(CReportText& block) const {
  CAlignment alignment(static_cast<std::size_t>(right_flank_end - left_flank + sat.deletions + 2));
  if (global_flanking > 0) {
    alignment.flank(left_flank, sat.pos_left);
    alignment.column(':', ' ', ' ');
  }
  align(alignment, sat);
  if (global_flanking > 0) {
    alignment.column(':', ' ', ' ');
    alignment.flank(sat.pos_right, right_flank_end);
  }
  alignment.append_to(block);
}

}  // namespace

void Csat::report_sat(std::FILE* out, CSequence_Mol& seq) const {
  const float its_perfection = perfection();
  if (!is_reported_perfection(its_perfection)) return;
  static report_workspace work;
  if (set_to_reported_unit(work, *this)) return;
  CSatReport(*this, seq, its_perfection, work).write(out);
}
