#include "json-text.h"

#include <nlohmann/json.hpp>

using nlohmann::json;

std::string json_text(std::string_view bytes) {
  return json(std::string(bytes)).dump(-1, ' ', false, json::error_handler_t::replace);
}

std::string as_utf8(std::string_view bytes) { return json::parse(json_text(bytes)).get<std::string>(); }

bool is_utf8(std::string_view bytes) { return as_utf8(bytes) == bytes; }

std::string hexadecimal(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text.append({digits[byte / 16U], digits[byte % 16U]});
  }
  return text;
}
