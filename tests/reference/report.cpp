#include <algorithm>
#include <cstring>

#include "parameters.h"
#include "search.h"

namespace {

const char* const REPEAT_NAMES[] = {"***  ERROR  ***", "mononucleotide",  "dinucleotide",  "trinucleotide",
                                    "tetranucleotide", "pentanucleotide", "hexanucleotide"};

void print_repeat_name(FILE* out, int L) {
  if (L < 7)
    fprintf(out, "%16s", REPEAT_NAMES[L]);
  else
    fprintf(out, "%5d-nucleotide", L);
}

char complement(char c) {
  switch (c) {
    case 'A':
      return 'T';
    case 'T':
      return 'A';
    case 'C':
      return 'G';
    case 'G':
      return 'C';
    case 'B':
      return 'V';
    case 'V':
      return 'B';
    case 'D':
      return 'H';
    case 'H':
      return 'D';
    case 'K':
      return 'M';
    case 'M':
      return 'K';
    case 'R':
      return 'Y';
    case 'Y':
      return 'R';
    case 'N':
      return 'N';
    default:
      return '?';
  }
}

// The alphabetically smallest cyclic permutation; periodic if the source equals another rotation of
// itself.
std::string minimal_rotation(const std::string& source, bool& periodic) {
  const std::size_t n = source.size();
  const std::string twice = source + source;
  const char* best = twice.c_str();
  periodic = false;
  for (std::size_t i = 1; i < n; ++i) {
    const int order = strncmp(twice.c_str() + i, best, n);
    if (order < 0)
      best = twice.c_str() + i;
    else if (order == 0)
      periodic = true;
  }
  return std::string(best, n);
}

bool is_prime(std::size_t p) {
  for (std::size_t d = 2; d * d <= p; ++d)
    if (p % d == 0) return false;
  return true;
}

// Tests the unit as found: cut into p equal blocks for each prime p < n that divides n.
bool is_repetition_of_blocks(const std::string& unit) {
  const std::size_t n = unit.size();
  for (std::size_t p = 2; p < n; ++p) {
    if (n % p != 0 || !is_prime(p)) continue;
    const std::size_t block = n / p;
    bool all_equal = true;
    for (std::size_t i = 0; i + 1 < p; ++i)
      if (strncmp(unit.c_str() + i * block, unit.c_str() + (i + 1) * block, block) != 0) all_equal = false;
    if (all_equal) return true;
  }
  return false;
}

}  // namespace

bool Csat::reported_unit(std::string& unit) const {
  unit.assign(unit_begin, unit_end);
  if (global_report_unit_mode == 0) return !is_repetition_of_blocks(unit);
  bool periodic = false;
  if (global_report_unit_mode == 1) {
    unit = minimal_rotation(unit, periodic);
    return !periodic;
  }
  std::string reverse_complement;
  for (const char* p = unit_end; p != unit_begin; --p) reverse_complement.push_back(complement(p[-1]));
  const std::string r = minimal_rotation(reverse_complement, periodic);
  bool ignored = false;
  const std::string u = minimal_rotation(unit, ignored);
  unit = strcmp(r.c_str(), u.c_str()) > 0 ? u : r;
  return !periodic;
}

void Csat::report_sat(FILE* out, const CSequence_Mol& seq) const {
  const float perfection_value = perfection();
  if (global_min_perfection > perfection_value || perfection_value > global_max_perfection) return;
  std::string unit_text;
  if (!reported_unit(unit_text)) return;

  const char* const unit = unit_text.c_str();
  const char* const name = seq.short_name.c_str();
  const char* const seq_begin = seq.symbols.data();
  const char* const seq_end = seq_begin + seq.symbols.size();
  const int u = unit_length();
  const int start = static_cast<int>(pos_left - seq_begin + 1);
  const int end = static_cast<int>(pos_right - seq_begin);
  const int span = static_cast<int>(pos_right - pos_left);
  const int f = global_flanking;
  const int left_flank_length = static_cast<int>(std::min<std::ptrdiff_t>(f, pos_left - seq_begin));
  const int right_flank_length = static_cast<int>(std::min<std::ptrdiff_t>(f, seq_end - pos_right));
  const char* const left_flank = pos_left - left_flank_length;
  const double repeat_number = static_cast<double>(static_cast<float>(length()) / static_cast<float>(u));
  const double perfection_percent = static_cast<double>(perfection_value);

  switch (global_print_sat_mode) {
    case 0:
      print_repeat_name(out, u);
      fprintf(out, " %9d : %9d | %6d bp | %6d BP | %6d pt | %7.3f %% | unit %s\n", start, end, span, length(), score,
              perfection_percent, unit);
      break;
    case 1:
      print_repeat_name(out, u);
      fprintf(out, " %9d : %9d | %6d bp | %6d BP | %6d pt | %7.3f %% | %3d mis | %3d ins | %3d del | ", start, end,
              span, length(), score, perfection_percent, mismatches, insertions, deletions);
      if (!global_treat_Ns_as_missense) fprintf(out, "%3d N | ", number_of_Ns);
      fprintf(out, " unit %s\n", unit);
      fprintf(out, "Missense: ");
      for (const auto& [position, letter] : missense)
        fprintf(out, "(%d,%c),", static_cast<int>(position - pos_left + 1), letter);
      fprintf(out, "\n");
      break;
    case 2:
      fprintf(
          out,
          "%s\tQuarvo\ttandem-repeat\t%d\t%d\t%.2f\t.\t.\tName=\"repeat_region %d-%d unit_size %d repeat_number %.3f "
          "perfection %.3f unit %s\"\n",
          name, start, end, perfection_percent, start, end, u, repeat_number, perfection_percent, u > 50 ? "." : unit);
      return;
    case 3:
      fprintf(out, "%s\t%d\t%.3f\t%d\t%d\t%d\t%7.3f\t%d\t%d\t%d\t%d", name, u, perfection_percent, start, end, span,
              repeat_number, score, mismatches, insertions, deletions);
      if (global_treat_Ns_as_missense)
        fprintf(out, "\t.");
      else
        fprintf(out, "\t%d", number_of_Ns);
      fprintf(out, "\t%s", unit);
      fprintf(out, "\t%.*s", span, pos_left);
      if (f > 0) {
        fprintf(out, "\t%.*s", left_flank_length, left_flank);
        fprintf(out, "\t%.*s", right_flank_length, pos_right);
      }
      fprintf(out, "\n");
      return;
    case 4:
      fprintf(out, ">%s %d %d %d %d %d %.3f %d %.3f %d %d %d\n", name, left_flank_length + 1, span, u, start, end,
              repeat_number, score, perfection_percent, mismatches, insertions, deletions);
      fprintf(out, "%.*s\n", left_flank_length + span + right_flank_length, left_flank);
      return;
    case 5: {
      char long_name[30];
      snprintf(long_name, sizeof long_name, "%d-nucleotide", u);
      fprintf(out, "%s %d : %d -- length %d score %d perfection %d unit %s\n", u > 6 ? long_name : REPEAT_NAMES[u],
              start, end, length(), score, static_cast<int>(perfection_percent + 0.5), unit);
      fflush(out);
      break;
    }
    default:
      fprintf(out, "Internal error. Unknown output format. Please report this bug");
      return;
  }

  if (global_print_sat_seq_mode == 1) {
    if (f > 0) {
      fprintf(out, "%.*s:", left_flank_length, left_flank);
      fprintf(out, "%.*s:", span, pos_left);
      fprintf(out, "%.*s\n", right_flank_length, pos_right);
    } else
      fprintf(out, "%.*s\n", span, pos_left);
  } else if (global_print_sat_seq_mode == 2)
    print_alignment(out, left_flank, pos_right + right_flank_length);
}

void Csat::print_alignment(FILE* out, const char* left_flank, const char* right_flank_end) const {
  std::string sequence_line;
  std::string marker_line;
  std::string unit_line;
  const auto append = [&](char symbol, char marker, char unit_symbol) {
    sequence_line.push_back(symbol);
    marker_line.push_back(marker);
    unit_line.push_back(unit_symbol);
  };
  const auto next_of = [&](const char* cursor) { return cursor + 1 == unit_end ? unit_begin : cursor + 1; };

  if (global_flanking > 0) {
    for (const char* p = left_flank; p != pos_left; ++p) append(*p, ' ', ' ');
    append(':', ' ', ' ');
  }
  const char* cursor = next_of(bwd_unit_cursor);
  std::size_t entry = 0;
  const char* base = pos_left;
  while (base != pos_right) {
    const char* const entry_position = entry < missense.size() ? missense[entry].first : pos_right;
    if (base != entry_position) {
      append(*base, *base == 'N' ? '*' : '|', *cursor);
      ++base;
      cursor = next_of(cursor);
    } else if (missense[entry].second == 'M') {
      append(*base, ' ', *cursor);
      ++base;
      cursor = next_of(cursor);
      ++entry;
    } else if (missense[entry].second == 'I') {
      append(*base, ' ', '-');
      ++base;
      ++entry;
    } else {
      append('-', ' ', *cursor);
      cursor = next_of(cursor);
      ++entry;
    }
  }
  if (global_flanking > 0) {
    append(':', ' ', ' ');
    for (const char* p = pos_right; p != right_flank_end; ++p) append(*p, ' ', ' ');
  }
  for (const std::string* line : {&sequence_line, &marker_line, &unit_line})
    fprintf(out, "%.*s\n", static_cast<int>(line->size()), line->c_str());
}

// ---- framing of the results ------------------------------------------------------------------

void print_output_format(FILE* out, const char* prefix) {
  if (global_print_sat_mode == 0 || global_print_sat_mode == 1 || global_print_sat_mode == 5) {
    int number = 0;
    const auto column = [&](const char* text) { fprintf(out, "%sColumn %2d: %s\n", prefix, ++number, text); };
    fprintf(out, "%s\n%sColumns in lines of output providing repeat information:\n", prefix, prefix);
    column("Repeat unit length");
    column("Position at which repeat starts in current sequence");
    column("Position at which repeat ends in current sequence");
    column("Length of repeat in original sequence, i.e. (end-start+1)");
    column("Normalized repeat length, i.e. (end-start+1-insertions+deletions)");
    column("Repeat score");
    column("Repeat perfection");
    if (global_print_sat_mode == 1) {
      column("Number of mismatches");
      column("Number of insertions");
      column("Number of deletions");
      if (!global_treat_Ns_as_missense) column("Number of N's");
    }
    column("Repeat unit");
    fprintf(out, "%s\n", prefix);
  } else if (global_print_sat_mode == 3) {
    fprintf(out,
            "seq-name\tunit-length\tperfection\tstart\tend\tlength\trepeat-number\tscore\tmismatches\tinsertions\t"
            "deletions\tNs\tunit\trepeat-seq");
    if (global_flanking != 0) fprintf(out, "\tleft-flanking-seq\tright-flanking-seq");
    fprintf(out, "\n");
  }
}

void CSearchController::report_SATList(FILE* out, const std::list<Csat>& list) const {
  const int format = global_print_sat_mode;
  const bool own_format = format == 0 || format == 1 || format == 5;
  const bool commented = (format == 2 || format == 3) && global_sequenceInfoAsComment;
  const char* const full_name = sequence.full_name.c_str();
  const char* const short_name = sequence.short_name.c_str();
  const int length = static_cast<int>(sequence.symbols.size());

  if (own_format)
    fprintf(out, ">%s\nsequence length: %d\n", full_name, length);
  else if (commented)
    fprintf(out, "# Full sequence name:\n#>%s\n##sequence-region %s 1 %d\n", full_name, short_name, length);
  for (const Csat& sat : list) sat.report_sat(out, sequence);
  if (own_format)
    fprintf(out, "# Analysis of sequence \"%s\" completed.\n", full_name);
  else if (commented)
    fprintf(out, "# Analysis of sequence \"%s\" completed.\n", short_name);
  fflush(out);
}
