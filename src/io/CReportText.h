#pragma once

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

// Text under construction for the results, byte for byte what formatted printing would give, without its cost: a
// repeat-rich genome has more numbers to print than symbols to search.
class CReportText {
 public:
  CReportText& text(const char* s) {
    bytes.append(s);
    return *this;
  }

  // The bytes [begin, end).
  CReportText& stretch(const char* begin, const char* end) {
    bytes.append(begin, end);
    return *this;
  }

  CReportText& symbol(char c) {
    bytes.push_back(c);
    return *this;
  }

  // As "%*s".
  CReportText& text_right_aligned(const char* s, unsigned width) {
    return right_aligned(s, static_cast<unsigned>(std::strlen(s)), width);
  }

  // As "%*d".
  CReportText& number(int value, unsigned width = 0) {
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return right_aligned(digits, static_cast<unsigned>(end - digits), width);
  }

  // As "%*.*f".
  CReportText& fixed(float value, int decimals, unsigned width = 0) {
    char digits[80];
    if (!std::isfinite(value)) {
      std::snprintf(digits, sizeof digits, "%f", static_cast<double>(value));
      return right_aligned(digits, static_cast<unsigned>(std::strlen(digits)), width);
    }
    const auto end =
        std::to_chars(digits, digits + sizeof digits, static_cast<double>(value), std::chars_format::fixed, decimals)
            .ptr;
    return right_aligned(digits, static_cast<unsigned>(end - digits), width);
  }

  // Starts again with no text, in the same memory.
  CReportText& clear() {
    bytes.clear();
    return *this;
  }

  void reserve(std::size_t n) { bytes.reserve(n); }

  void write_to(std::FILE* out) const { std::fwrite(bytes.data(), 1, bytes.size(), out); }

 private:
  std::string bytes;

  CReportText& right_aligned(const char* digits, unsigned count, unsigned width) {
    if (count < width) bytes.append(width - count, ' ');
    bytes.append(digits, count);
    return *this;
  }
};
