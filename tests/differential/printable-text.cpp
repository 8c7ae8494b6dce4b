#include "printable-text.h"

#include <algorithm>
#include <cctype>

namespace differential {

namespace {

void append_escape(std::string& text, unsigned char byte) {
  text += '\\';
  text += static_cast<char>('0' + (byte >> 6));
  text += static_cast<char>('0' + ((byte >> 3) & 7));
  text += static_cast<char>('0' + (byte & 7));
}

bool is_plain(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || std::string_view("-_./=,+:").find(c) != std::string::npos;
}

}  // namespace

std::string printable(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      text += "\\n";
    } else if (byte < ' ' || byte > '~' || c == '\\' || c == '%' || c == '\'') {
      append_escape(text, byte);
    } else {
      text += c;
    }
  }
  return text;
}

std::string printing_command(std::string_view bytes) {
  constexpr std::size_t long_run = 100;
  std::string words = "printf '";
  while (!bytes.empty()) {
    const std::size_t run = std::min(bytes.find_first_not_of(bytes[0]), bytes.size());
    if (run < long_run) {
      words += printable(bytes.substr(0, run));
    } else {
      words.append("'; printf '").append(printable(bytes.substr(0, 1))).append("%.0s' $(seq ");
      words.append(std::to_string(run)).append("); printf '");
    }
    bytes.remove_prefix(run);
  }
  return words + "'";
}

std::string shell_word(const std::string& word) {
  bool plain = !word.empty();
  for (const char c : word) plain = plain && is_plain(c);
  if (plain) return word;
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string command_line(const std::string& program, const test_case& tested) {
  std::string line = shell_word(program);
  for (const std::string& word : command_words(tested)) line += ' ' + shell_word(word);
  return line;
}

}  // namespace differential
