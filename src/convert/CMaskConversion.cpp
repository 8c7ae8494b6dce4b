#include "CMaskConversion.h"

#include <limits>

#include "CSequence_Mol.h"
#include "shown-text.h"
#include "text-output.h"

namespace {

constexpr std::int64_t whole_record = std::numeric_limits<std::int64_t>::max();

bool is_symbol(int c) {
  const char meaning = symbol_table[static_cast<char>(c)];
  return meaning != CSymbolTable::skipped && meaning != CSymbolTable::line_end;
}

int masked(int symbol, int kind) {
  if (kind == mask_by_N) return 'N';
  if (kind == mask_by_X) return 'X';
  return symbol >= 'A' && symbol <= 'Z' ? symbol - 'A' + 'a' : symbol;
}

}  // namespace

bool CMaskConversion::begin(std::FILE* /*out*/, const results_header& header) {
  may_skip_names = !header.names_every_sequence();
  file = std::make_unique<CFile>();
  file->open(file_name.c_str());
  return !file->has_failed() || refuse_file("It cannot be opened.", companion_status::not_read);
}

// Sequences in front of it were not searched, or have no repeats.
bool CMaskConversion::begin_sequence(std::FILE* out, const results_sequence& sequence) {
  if (may_skip_names && !names.add(sequence.name)) return refuse(repeated_name(sequence));
  std::string name;
  do {
    if (!end_record(out)) return false;
    if (!copy_header_line(out, name)) {
      return refuse_file("It has no sequence \"" + shown(sequence.name) + "\" where the results have one.",
                         companion_status::not_suited);
    }
  } while (name != sequence.name);
  length = sequence.length;
  return true;
}

bool CMaskConversion::add(std::FILE* out, const results_repeat& repeat) {
  copy_up_to(out, repeat.start - 1, false);
  copy_up_to(out, repeat.end, true);
  return position >= repeat.end ||
         refuse_file("A sequence of it ends in front of a repeat of the results.", companion_status::not_suited);
}

bool CMaskConversion::finish(std::FILE* out) {
  std::string ignored;
  do {
    if (!end_record(out)) return false;
  } while (copy_header_line(out, ignored));
  return true;
}

// Copies up to the symbol `end` of the record, counted from 1, or to its end. Returns false there.
bool CMaskConversion::copy_up_to(std::FILE* out, std::int64_t end, bool masks) {
  while (position < end) {
    int c = file->getchar();
    if (file->has_failed()) return false;
    if (is_at_line_start && c == '>') {
      file->ungetchar();
      return false;
    }
    is_at_line_start = c == '\n' || (is_at_line_start && !is_in_record && !is_symbol(c));
    if (is_symbol(c)) {
      ++position;
      if (masks) c = masked(c, kind);
    }
    putc_unlocked(c, out);
  }
  return true;
}

bool CMaskConversion::end_record(std::FILE* out) {
  copy_up_to(out, whole_record, false);
  if (file->fault != nullptr) {
    return refuse_file(std::string(file->fault) + ".", companion_status::not_read);
  }
  if (length && position != *length) {
    return refuse_file("A sequence of it has " + std::to_string(position) + " symbols and in the results " +
                           std::to_string(*length) + ".",
                       companion_status::not_suited);
  }
  length.reset();
  return true;
}

// Returns false at the end of the file.
bool CMaskConversion::copy_header_line(std::FILE* out, std::string& name) {
  std::string line;
  for (int c = file->getchar(); !file->has_failed(); c = file->getchar()) {
    line += static_cast<char>(c);
    if (c == '\n') break;
  }
  if (line.empty()) return false;
  write(out, line);
  name = line.substr(1, line.find_first_of(" \n") - 1);
  is_in_record = true;
  is_at_line_start = true;
  position = 0;
  return true;
}

bool CMaskConversion::refuse_file(const std::string& why, int status) {
  return refuse("Sorry! This file cannot be masked:\n   \"" + shown(file_name) + "\"\n" + why +
                    "\nPlease name the FASTA file that was searched, as it was then.\n",
                status);
}
