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
    char* const end = fixed_digits(digits, digits + sizeof digits, value, decimals);
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

  static char* fixed_digits(char* begin, char* end, float value, int decimals) {
    double scale = 1;
    for (int i = 0; i < decimals; ++i) scale *= 10;
    // The product is exact, as the 24 bits of a float and the bits of the scale fit into a double, so one rounding is
    // made here as well as in formatted printing: to the nearest integer, to the even one of two.
    constexpr double largest = 1e9;
    if (decimals > 0 && scale < 1e8 && !std::signbit(value) && value * scale < largest) {
      const auto scaled = static_cast<unsigned>(std::nearbyint(value * scale));
      const auto unit = static_cast<unsigned>(scale);
      char* at = std::to_chars(begin, end, scaled / unit).ptr;
      // The fraction with a leading 1, which keeps its zeros and makes place for the point.
      std::to_chars(at, end, scaled % unit + unit);
      *at = '.';
      return at + 1 + decimals;
    }
    if (!std::isfinite(value)) return begin + std::snprintf(begin, 16, "%f", static_cast<double>(value));
    return std::to_chars(begin, end, static_cast<double>(value), std::chars_format::fixed, decimals).ptr;
  }

  CReportText& right_aligned(const char* digits, unsigned count, unsigned width) {
    if (count < width) bytes.append(width - count, ' ');
    bytes.append(digits, count);
    return *this;
  }
};
