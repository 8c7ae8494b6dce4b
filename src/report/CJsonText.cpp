#include "CJsonText.h"

#include <array>
#include <charconv>

namespace {

constexpr unsigned replacement = 0xFFFD;

struct decoded {
  unsigned code_point;
  std::size_t bytes;
};

bool is_continuation(std::string_view text, std::size_t at) {
  return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

// The smallest code point that a sequence of that many bytes may hold.
constexpr std::array<unsigned, 5> smallest_of{0, 0, 0x80, 0x800, 0x10000};

// The character at the beginning of a text that is not empty; one byte as U+FFFD where it is no UTF-8.
decoded decode(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x80) return {first, 1};
  const std::size_t bytes = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4) return {replacement, 1};
  unsigned code_point = first & (0x7FU >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    if (!is_continuation(text, i)) return {replacement, 1};
    code_point = code_point << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
  }
  const bool is_surrogate = code_point >= 0xD800 && code_point <= 0xDFFF;
  if (code_point < smallest_of[bytes] || code_point > 0x10FFFF || is_surrogate) return {replacement, 1};
  return {code_point, bytes};
}

void append_unit(std::string& out, unsigned unit) {
  constexpr char digits[] = "0123456789abcdef";
  out += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) out += digits[unit >> shift & 0xF];
}

void append_code_point(std::string& out, unsigned code_point) {
  if (code_point < 0x10000) {
    append_unit(out, code_point);
    return;
  }
  append_unit(out, 0xD800 + ((code_point - 0x10000) >> 10));
  append_unit(out, 0xDC00 + ((code_point - 0x10000) & 0x3FF));
}

bool is_plain(char symbol) {
  return symbol >= ' ' && symbol <= '~' && symbol != '"' && symbol != '\\' && symbol != '<' && symbol != '>' &&
         symbol != '&';
}

}  // namespace

CJsonText& CJsonText::key(std::string_view name) {
  separate();
  append_escaped(name);
  out += ':';
  needs_comma = false;
  return *this;
}

CJsonText& CJsonText::value(std::string_view text) {
  separate();
  append_escaped(text);
  return *this;
}

CJsonText& CJsonText::value(std::int64_t number) {
  separate();
  std::array<char, 24> digits{};
  out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
  return *this;
}

CJsonText& CJsonText::null() { return finished("null"); }

CJsonText& CJsonText::finished(std::string_view json) {
  separate();
  out += json;
  return *this;
}

CJsonText& CJsonText::open(char bracket) {
  separate();
  out += bracket;
  needs_comma = false;
  return *this;
}

CJsonText& CJsonText::close(char bracket) {
  out += bracket;
  needs_comma = true;
  return *this;
}

void CJsonText::separate() {
  if (needs_comma) out += ',';
  needs_comma = true;
}

void CJsonText::append_escaped(std::string_view text) {
  out += '"';
  while (!text.empty()) {
    if (is_plain(text[0])) {
      out += text[0];
      text.remove_prefix(1);
      continue;
    }
    const decoded next = decode(text);
    append_code_point(out, next.code_point);
    text.remove_prefix(next.bytes);
  }
  out += '"';
}

std::size_t json_size(std::int64_t number) {
  std::size_t size = number < 0 ? 3 : 2;
  for (; number >= 10 || number <= -10; number /= 10) ++size;
  return size;
}

std::size_t json_size(std::string_view text) {
  CJsonText json;
  return json.value(text).text().size() + 1;
}
