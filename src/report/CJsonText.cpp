#include "CJsonText.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "json-text.h"

namespace {

bool is_plain(char symbol) {
  return symbol >= ' ' && symbol <= '~' && symbol != '"' && symbol != '\\' && symbol != '<' && symbol != '>' &&
         symbol != '&';
}

// What means something in HTML stands in a text alone, never in the notation around it.
void append_inert(std::string& out, char symbol) {
  switch (symbol) {
    case '<':
      out += "\\u003c";
      break;
    case '>':
      out += "\\u003e";
      break;
    case '&':
      out += "\\u0026";
      break;
    default:
      out += symbol;
  }
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
  if (std::all_of(text.begin(), text.end(), is_plain)) {
    out.append(1, '"').append(text).append(1, '"');
    return;
  }
  for (const char symbol : json_text(text)) append_inert(out, symbol);
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
