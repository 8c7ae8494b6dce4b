#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

// Bytes of any kind as JSON.

// True when the bytes are valid UTF-8.
bool is_utf8(std::string_view bytes);

// The bytes as UTF-8, unquoted. What is no UTF-8 becomes U+FFFD.
std::string as_utf8(std::string_view bytes);

// The document on one line that may stand inside an HTML script element: '<', '>' and '&' are escaped, so nothing in it
// can end that element. What is no UTF-8 becomes U+FFFD.
std::string inert_json(const nlohmann::ordered_json& document);

// The number of bytes that a number or a text takes there, with the comma after it.
std::size_t json_size(std::int64_t number);
std::size_t json_size(std::string_view text);

// Two lower-case digits a byte.
std::string hexadecimal(std::string_view bytes);
