#include "fasta-layout.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace differential {

namespace {

using namespace std::string_view_literals;

class CWildWriter {
 public:
  explicit CWildWriter(CRandom& source) : random(source) { choose_habits(); }

  std::string write(const std::vector<fasta_record>& records) {
    append_preamble();
    for (const fasta_record& record : records) append_record(record);
    change_end();
    if (random.percent(25)) spoil();
    return std::move(text);
  }

 private:
  CRandom& random;
  std::string text;
  std::size_t line_length = 60;
  std::vector<std::string> line_ends;
  bool lower_case = false;
  bool other_letters = false;
  bool skipped_bytes = false;
  bool blank_lines = false;

  void choose_habits() {
    line_length = random.one_of<std::size_t>({1, 2, 7, 59, 60, 61, 80, 100000});
    line_ends = {random.one_of<const char*>({"\n", "\n", "\r\n", "\r"})};
    if (random.percent(15)) line_ends = {"\n", "\r\n", "\r"};
    lower_case = random.percent(30);
    other_letters = random.percent(20);
    skipped_bytes = random.percent(20);
    blank_lines = random.percent(25);
  }

  void end_line() { text += line_ends[random.below(line_ends.size())]; }

  void append_preamble() {
    if (random.percent(10)) end_line();
    if (random.percent(5)) text += random.one_of<const char*>({" ", "\t", "\v\f", " \r"});
    while (random.percent(15)) {
      text += '#';
      text += random.one_of<const char*>({"", " a comment", ">not a header", "#"});
      end_line();
      if (random.percent(20)) end_line();
    }
  }

  void append_record(const fasta_record& record) {
    text += '>' + record.header;
    end_line();
    const std::size_t length = random.percent(80) ? line_length : 1 + random.below(200);
    for (std::size_t begin = 0; begin < record.symbols.size(); begin += length) {
      for (const char symbol : std::string_view(record.symbols).substr(begin, length)) append_symbol(symbol);
      end_line();
      if (blank_lines && random.percent(10)) end_line();
    }
    while (blank_lines && random.percent(40)) end_line();
  }

  void append_symbol(char symbol) {
    if (skipped_bytes && random.percent(3)) text += random.symbol_of(" -*\t\v\f"sv);
    if (other_letters && random.percent(30)) symbol = other_letter(symbol);
    if (lower_case && random.percent(50)) symbol = static_cast<char>(std::tolower(symbol));
    text += symbol;
  }

  char other_letter(char symbol) {
    if (symbol == 'T') return 'U';
    if (symbol == 'N') return random.symbol_of("NXRYKMSWBDHV?"sv);
    return symbol;
  }

  void change_end() {
    const int kind = random.between(1, 100);
    if (kind <= 30) {
      while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
    } else if (kind <= 38) {
      text += '>';
    } else if (kind <= 42) {
      text += ">last";
    } else if (kind <= 46) {
      text += ">>";
    } else if (kind <= 50) {
      text += random.one_of<const char*>({" ", "\t\n", "\n\n\n", "\r\r", "\r", "\n\r", "-"});
    }
  }

  char bad_byte() {
    return random.percent(60) ? random.symbol_of("\0>#1.JEFILOPQZ\x80\xff\x01/@[`{%"sv)
                              : static_cast<char>(random.below(256));
  }

  // A byte or two that do not belong there, one in four times as the very last byte.
  void spoil() {
    for (int i = random.between(1, 2); i > 0; --i) {
      std::size_t at = random.percent(25) ? text.size() : random.below(text.size() + 1);
      if (random.percent(10)) at = std::min<std::size_t>(text.size(), random.below(3));
      if (random.percent(60) || at == text.size()) {
        text.insert(at, 1, bad_byte());
      } else {
        text[at] = bad_byte();
      }
    }
    if (random.percent(15)) text.resize(random.below(text.size() + 1));
  }
};

std::string random_bytes(CRandom& random, std::size_t length) {
  std::string bytes;
  while (bytes.size() < length) {
    const char byte = static_cast<char>(random.below(256));
    if (byte != '\n' && byte != '\r') bytes += byte;
  }
  return bytes;
}

}  // namespace

std::string plain_fasta(const std::vector<fasta_record>& records) {
  constexpr std::size_t line_length = 60;
  std::string text;
  for (const fasta_record& record : records) {
    text += '>' + record.header + '\n';
    for (std::size_t begin = 0; begin < record.symbols.size(); begin += line_length) {
      text += record.symbols.substr(begin, line_length) + '\n';
    }
  }
  return text;
}

std::string wild_fasta(CRandom& random, const std::vector<fasta_record>& records) {
  return CWildWriter(random).write(records);
}

std::string random_header(CRandom& random) {
  const int kind = random.between(1, 100);
  if (kind <= 50) return std::string("record").append(std::to_string(random.below(1000)));
  if (kind <= 60) return "chr1 Homo sapiens chromosome 1";
  if (kind <= 65) return "";
  if (kind <= 70) return random.one_of<const char*>({" ", " name", "name ", "name   two words ", "a\tb c", ">x", "#y"});
  if (kind <= 75) return std::string(random.below(200), 'x');
  if (kind <= 80) return std::string(random.below(200), 'x') + ' ' + std::string(random.below(200), 'y');
  if (kind <= 85) return random.one_of<const char*>({"100%s%n%d", "na;me=1,&", "\"quoted\"", "\\n", "a|b|c"});
  if (kind <= 90) return random_bytes(random, random.below(100));
  return std::string("s").append(std::to_string(random.below(10)));
}

}  // namespace differential
