#pragma once

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

#include "CFile.h"
#include "faststring.h"
#include "symbol-copy.h"

// What a byte of a sequence line means: a symbol to store, or one of these.
class CSymbolTable {
 public:
  static constexpr char skipped = 0;
  static constexpr char line_end = 1;
  static constexpr char replaced = 2;
  static constexpr char bad = 3;

  constexpr CSymbolTable() {
    for (char& entry : meanings) entry = bad;
    set("Aa", 'A');
    set("Cc", 'C');
    set("Gg", 'G');
    set("TtUu", 'T');
    set("NnXxRrYyKkMmSsWwBbDdHhVv?", replaced);
    set(" \t\v\f-*", skipped);
    set("\n\r", line_end);
  }

  constexpr char operator[](char byte) const { return meanings[static_cast<unsigned char>(byte)]; }

 private:
  std::array<char, 256> meanings{};

  constexpr void set(const char* bytes, char meaning) {
    for (; *bytes != '\0'; ++bytes) meanings[static_cast<unsigned char>(*bytes)] = meaning;
  }
};
inline constexpr CSymbolTable symbol_table;

// One FASTA record, read into a normalised DNA alphabet, and its reader.
//
// `symbols` holds one byte per position, only 'A', 'C', 'G', 'T' and the replacement symbol. The record is reused from
// call to call and keeps its buffers; searches point into `symbols`, so nothing may grow it between two reads.
class CSequence_Mol {
 public:
  faststring full_name;    // the header line after '>', byte for byte
  faststring short_name;   // the header up to its first blank
  faststring description;  // the header after the first run of blanks
  faststring symbols;
  int type;                 // 1: DNA, the only type there is
  char replacement_symbol;  // stands for every ambiguity code
  // Where a read also leaves the letters of the symbols as they stand in the file; none by default.
  faststring* letters = nullptr;

  // Positions are 32-bit signed numbers in the results, so no record may be longer.
  static constexpr unsigned max_length = 2147483647;

  CSequence_Mol(int molecule_type, char replacement) : type(molecule_type), replacement_symbol(replacement) {}

  // The longest header that is read. Shorter limits exist for tests.
  unsigned max_header_length = max_length;

  // True after a read that met more than max_length symbols; the file is then in its fail state.
  bool is_too_long() const { return symbols.length > max_length; }
  // True after a read that met a header of more than max_header_length bytes; the file is then in its fail state.
  bool has_too_long_header() const { return is_header_cut; }

  // Reads the next record and stops in front of the '>' of the one after it.
  //
  // The outcome is in file.status: good; end of file (record complete, nothing after it); fail without end of file
  // (format error on line file.line, or a record that is_too_long() or has_too_long_header(); the record must not be
  // used).
  void readFastaSequence(CFile& file) {
    full_name.assign("");
    symbols.length = 0;
    if (letters != nullptr) letters->length = 0;
    is_header_cut = false;
    if (!find_header(file)) return;
    if (!read_header_line(file)) return;
    split_header();
    read_sequence_lines(file);
  }

 private:
  bool is_header_cut = false;

  static bool is_space(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

  static int skip_white_space(CFile& file, int c) {
    while (!file.has_failed() && is_space(c)) c = file.getchar();
    return c;
  }

  // Moves past the '>' of the next header, over white space and comment lines.
  static bool find_header(CFile& file) {
    int c = skip_white_space(file, file.getchar());
    while (!file.has_failed() && c == '#') {
      do c = file.getchar();
      while (c != '\n' && !file.has_failed());
      c = skip_white_space(file, file.getchar());
    }
    if (c == '>') return true;
    file.status = CFile::fail_state;
    return false;
  }

  // Returns false when the file ends directly after the '>' or when the header is too long.
  bool read_header_line(CFile& file) {
    for (;;) {
      append_plain_header_bytes(file);
      const int c = file.getchar();
      if (c == '\n') return true;
      if (file.has_failed()) break;
      if (full_name.length == max_header_length) {
        is_header_cut = true;
        file.status = CFile::fail_state;
        return false;
      }
      full_name.push_back(static_cast<char>(c));
    }
    if (full_name.length == 0) return false;
    file.status = static_cast<signed char>(file.status & ~CFile::fail_state);
    return true;
  }

  // Takes what the buffer holds of the header up to the first byte that could be a line end, as far as it may be long.
  void append_plain_header_bytes(CFile& file) {
    const char* const from = file.buffer_pos;
    const auto available = static_cast<unsigned>(find_line_end(from, file.buffer_end) - from);
    const unsigned count = std::min(available, max_header_length - full_name.length);
    full_name.reserve_after(count);
    if (count != 0) std::memcpy(full_name.buffer + full_name.length, from, count);
    full_name.length += count;
    file.buffer_pos += count;
  }

  // Without a blank the description keeps what it held before.
  void split_header() {
    const char* const begin = full_name.buffer;
    const char* const end = begin + full_name.length;
    const char* blank = begin;
    while (blank != end && *blank != ' ') ++blank;
    short_name.assign(begin, blank);
    if (blank == end) return;
    while (blank != end && *blank == ' ') ++blank;
    description.assign(blank, end);
  }

  void read_sequence_lines(CFile& file) {
    for (;;) {
      const int next = file.getchar();
      file.ungetchar();
      if (file.has_failed()) return;
      if (next == '>') return;
      if (type == 1) {
        read_sequence_line(file);
      } else {
        std::puts("Not implemented.");
      }
    }
  }

  // Reads up to and including the line end, the end of the file or a byte that no sequence may hold.
  void read_sequence_line(CFile& file) {
    for (;;) {
      store_symbols_in_buffer(file);
      if (is_too_long()) {
        file.status = CFile::fail_state;
        return;
      }
      const int c = file.getchar();
      if (c == '\n' || file.has_failed()) return;
      const char meaning = symbol_table[static_cast<char>(c)];
      if (meaning == CSymbolTable::bad) {
        file.status = CFile::fail_state;
        return;
      }
      store(meaning);
      if (letters != nullptr && meaning != CSymbolTable::skipped) letters->push_back(static_cast<char>(c));
    }
  }

  void store(char meaning) {
    if (meaning == CSymbolTable::skipped) return;
    symbols.push_back(meaning == CSymbolTable::replaced ? replacement_symbol : meaning);
  }

  // Stores what the buffer holds of plain symbols from the read position on, as far as there is room for them, over
  // line ends that need no decision. All else is left to the byte by byte path.
  void store_symbols_in_buffer(CFile& file) {
    if (letters != nullptr) return;
    symbols.reserve_after(1);
    const auto count = std::min<std::ptrdiff_t>(file.buffer_end - file.buffer_pos, symbols.capacity - symbols.length);
    const char* const stop = file.buffer_pos + count;
    if (replacement_symbol == 'N') store_plain_lines(file, stop);
    store_symbols_one_by_one(file, stop);
  }

  void store_plain_lines(CFile& file, const char* stop) {
    const auto count = static_cast<std::size_t>(stop - file.buffer_pos);
    const copied_lines copied = copy_symbol_lines(file.buffer_pos, count, symbols.buffer + symbols.length);
    symbols.length += static_cast<unsigned>(copied.stored);
    file.buffer_pos += copied.consumed;
    file.line += static_cast<unsigned>(copied.line_ends);
  }

  // At most so many that plain symbols after them are not kept from the faster path.
  void store_symbols_one_by_one(CFile& file, const char* stop) {
    char* to = symbols.buffer + symbols.length;
    const char* from = file.buffer_pos;
    const char* const pause = from + std::min<std::ptrdiff_t>(stop - from, 64);
    for (; from != pause; ++from) {
      const char meaning = symbol_table[*from];
      if (meaning <= CSymbolTable::bad && meaning != CSymbolTable::replaced) break;
      *to++ = meaning == CSymbolTable::replaced ? replacement_symbol : meaning;
    }
    symbols.length = static_cast<unsigned>(to - symbols.buffer);
    file.buffer_pos += from - file.buffer_pos;
  }
};
