#pragma once

#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

// Reads a line piece by piece from the left. Every step says whether the piece was there; a failed step consumes
// nothing. Neither owns nor copies the text.
class CTextScanner {
 public:
  explicit CTextScanner(std::string_view text) : rest(text) {}

  std::string_view remainder() const { return rest; }
  bool at_end() const { return rest.empty(); }

  bool literal(std::string_view text) {
    if (!rest.starts_with(text)) return false;
    rest.remove_prefix(text.size());
    return true;
  }

  // Any number of blanks, then a number in plain notation. Integers that do not fit are no number.
  template <typename Number>
  bool padded_number(Number& value) {
    const std::size_t begin = rest.find_first_not_of(' ');
    if (begin == std::string_view::npos) return false;
    const auto [end, error] = std::from_chars(rest.data() + begin, rest.data() + rest.size(), value);
    if (error != std::errc()) return false;
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    return true;
  }

  // A padded number and the text directly after it.
  template <typename Number>
  bool padded_number(Number& value, std::string_view after) {
    const std::string_view before = rest;
    if (padded_number(value) && literal(after)) return true;
    rest = before;
    return false;
  }

  std::string_view take_remainder() { return std::exchange(rest, {}); }

  void skip_blanks() {
    while (!rest.empty() && rest.front() == ' ') rest.remove_prefix(1);
  }

 private:
  std::string_view rest;
};
