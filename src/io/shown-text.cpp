#include "shown-text.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace {

struct character {
  std::uint32_t code = 0;
  std::size_t bytes = 0;  // 0: no UTF-8
};

constexpr std::uint32_t largest_code = 0x10FFFF;

bool is_continuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

// The character that the text begins with.
character first_character(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < bytes) return {};
  std::uint32_t code = lead & (0x7FU >> bytes);
  for (std::size_t i = 1; i != bytes; ++i) {
    if (!is_continuation(text[i])) return {};
    code = (code << 6U) | (static_cast<unsigned char>(text[i]) & 0x3FU);
  }
  constexpr std::array<std::uint32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
  const bool is_surrogate = code >= 0xD800 && code <= 0xDFFF;
  return code < least[bytes] || code > largest_code || is_surrogate ? character{} : character{code, bytes};
}

bool may_stand(std::uint32_t code) {
  if (code < 0x20 || (code >= 0x7F && code < 0xA0)) return false;  // control characters
  if (code == 0x61C || code == 0x200E || code == 0x200F) return false;
  if (code >= 0x2028 && code <= 0x202E) return false;  // line ends and directions of writing
  return code < 0x2066 || code > 0x2069;
}

void append_escaped(std::string& to, std::string_view bytes) {
  for (const char byte : bytes) {
    std::array<char, 5> escape{};
    std::snprintf(escape.data(), escape.size(), "\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(byte)));
    to += escape.data();
  }
}

std::string shown_but(std::string_view text, bool do_line_ends_stay) {
  std::string result;
  while (!text.empty()) {
    const character first = first_character(text);
    const std::string_view bytes = text.substr(0, first.bytes == 0 ? 1 : first.bytes);
    const bool stays = (first.bytes != 0 && may_stand(first.code)) || (do_line_ends_stay && bytes == "\n");
    if (stays) {
      result += bytes;
    } else {
      append_escaped(result, bytes);
    }
    text.remove_prefix(bytes.size());
  }
  return result;
}

}  // namespace

std::string shown(std::string_view text) { return shown_but(text, false); }

std::string shown_lines(std::string_view text) { return shown_but(text, true); }
