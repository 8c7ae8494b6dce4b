#ifndef QUARVO_JSON_TEXT_H
#define QUARVO_JSON_TEXT_H

#include <string>
#include <string_view>

// Bytes of any kind as JSON.

// True when the bytes are valid UTF-8.
bool is_utf8(std::string_view bytes);

// The bytes as a JSON string with its quotes. What is no UTF-8 becomes U+FFFD.
std::string json_text(std::string_view bytes);

// The bytes as UTF-8, unquoted. What is no UTF-8 becomes U+FFFD.
std::string as_utf8(std::string_view bytes);

// Two lower-case digits a byte.
std::string hexadecimal(std::string_view bytes);

#endif
