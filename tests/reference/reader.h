// The input file, byte by byte, and the FASTA record read from it.
#pragma once

#include <cctype>
#include <cstring>
#include <fstream>
#include <string>

// Every line end (LF, CR LF, lone CR) arrives as one '\n'; one byte can be pushed back.
class CFile {
 public:
  static constexpr int eof_bit = 1;
  static constexpr int good_bit = 2;
  static constexpr int fail_bit = 4;

  int status = 0;
  unsigned line = 1;

  void open(const std::string& name) {
    stream.open(name, std::ios::in);
    status = good_bit;
    if (stream.fail() || stream.bad()) status = fail_bit;
    line = 1;
    buffer_pos = buffer_end = buffer;
  }

  bool failed() const { return (status & fail_bit) != 0; }
  bool at_end() const { return (status & eof_bit) != 0; }

  // The next byte as it stands, or 0 at the end of the file.
  int getchar_intern() {
    if (buffer_pos == buffer_end) {
      refill();
      if (failed()) return 0;
    }
    return static_cast<unsigned char>(*buffer_pos++);
  }

  // The next byte, '\n' for any line end, or 0 at the end of the file.
  int getchar() {
    const int c = getchar_intern();
    if (static_cast<signed char>(c) > 13) return c;
    if (failed()) return c;
    if (c == '\r') {
      buffer_pos[-1] = '\n';
      const int next = getchar_intern();
      if (!failed() && next != '\n') ungetchar();
      ++line;
      return '\n';
    }
    if (c == '\n') ++line;
    return c;
  }

  void ungetchar() {
    if (buffer_pos != buffer && buffer_pos[-1] == '\n' && !failed()) --line;
    if (buffer_pos == buffer)
      status = (status | fail_bit) & ~good_bit;
    else
      --buffer_pos;
  }

 private:
  std::ifstream stream;
  char buffer[1000000];
  char* buffer_end = buffer;
  char* buffer_pos = buffer;

  void refill() {
    char* begin = buffer;
    if (buffer_pos != buffer) {
      buffer[0] = buffer_pos[-1];
      begin = buffer + 1;
    }
    stream.read(begin, buffer + sizeof buffer - begin);
    const std::streamsize n = stream.gcount();
    if (n == 0) status = (status & ~(eof_bit | good_bit | fail_bit)) + eof_bit + fail_bit;
    buffer_pos = begin;
    buffer_end = begin + n;
  }
};

// One record; the object is used again for every record of the file.
class CSequence_Mol {
 public:
  std::string full_name;    // the header line behind '>'
  std::string short_name;   // up to its first blank
  std::string description;  // behind its first run of blanks
  std::string symbols;      // only A, C, G, T and the replacement symbol
  char replacement_symbol = 'N';

  // The outcome is in the file's status: good, end of file (a record was read), or fail alone.
  void readFastaSequence(CFile& file) {
    full_name.clear();
    symbols.clear();
    int c = skip_white_space(file);
    while (!file.failed() && c == '#') {
      do c = file.getchar();
      while (!file.failed() && c != '\n');
      c = skip_white_space(file);
    }
    if (c != '>') {
      file.status = CFile::fail_bit;
      return;
    }
    c = file.getchar();
    while (c != '\n' && !file.failed()) {
      full_name.push_back(static_cast<char>(c));
      c = file.getchar();
    }
    if (c != '\n') {  // the file ended inside the header line
      if (full_name.empty()) return;
      file.status &= ~CFile::fail_bit;
    }
    split_header();
    c = look_at_next_byte(file);
    while (!file.failed() && c != '>') {
      read_sequence_line(file);
      c = look_at_next_byte(file);
    }
  }

 private:
  static int skip_white_space(CFile& file) {
    int c = file.getchar();
    while (!file.failed() && isspace(c)) c = file.getchar();
    return c;
  }

  static int look_at_next_byte(CFile& file) {
    const int c = file.getchar();
    file.ungetchar();
    return c;
  }

  void split_header() {
    const std::size_t blank = full_name.find(' ');
    if (blank == std::string::npos) {
      short_name = full_name;
      return;
    }
    short_name.assign(full_name, 0, blank);
    std::size_t rest = blank;
    while (rest < full_name.size() && full_name[rest] == ' ') ++rest;
    description.assign(full_name, rest, std::string::npos);
  }

  void read_sequence_line(CFile& file) {
    for (int c = file.getchar(); c != '\n' && !file.failed(); c = file.getchar()) {
      const int u = toupper(c);
      if (u == 'A' || u == 'C' || u == 'G' || u == 'T')
        symbols.push_back(static_cast<char>(u));
      else if (u == 'U')
        symbols.push_back('T');
      else if (u != 0 && strchr("NXRYKMSWBDHV?", u))
        symbols.push_back(replacement_symbol);
      else if (isspace(u) || u == '-' || u == '*')
        continue;
      else {
        file.status = CFile::fail_bit;
        return;
      }
    }
  }
};
