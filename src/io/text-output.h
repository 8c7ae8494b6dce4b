#pragma once

#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>

// Small helpers for lines of text.

// Appends the number with so many decimals.
inline void append_fixed(std::string& text, double value, int decimals) {
  char digits[400];
  const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals).ptr;
  text.append(digits, end);
}

template <typename Integer>
void append_number(std::string& text, Integer value) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  text.append(digits, end);
}

inline void write(std::FILE* out, std::string_view text) { std::fwrite(text.data(), 1, text.size(), out); }
