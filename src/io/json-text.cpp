#include "json-text.h"

#include <nlohmann/json.hpp>

using nlohmann::ordered_json;

namespace {

std::string on_one_line(const ordered_json& document) {
  return document.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

}  // namespace

std::string as_utf8(std::string_view bytes) {
  return ordered_json::parse(on_one_line(std::string(bytes))).get<std::string>();
}

bool is_utf8(std::string_view bytes) { return as_utf8(bytes) == bytes; }

// What means something in HTML stands in a text alone, never in the notation around it.
std::string inert_json(const ordered_json& document) {
  const std::string plain = on_one_line(document);
  std::string inert;
  inert.reserve(plain.size());
  std::size_t begin = 0;
  for (std::size_t at = plain.find_first_of("<>&"); at != std::string::npos; at = plain.find_first_of("<>&", begin)) {
    inert.append(plain, begin, at - begin).append("\\u00").append(hexadecimal({&plain[at], 1}));
    begin = at + 1;
  }
  return inert.append(plain, begin);
}

std::size_t json_size(std::int64_t number) { return std::to_string(number).size() + 1; }
std::size_t json_size(std::string_view text) { return inert_json(std::string(text)).size() + 1; }

std::string hexadecimal(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text.append({digits[byte / 16U], digits[byte % 16U]});
  }
  return text;
}
