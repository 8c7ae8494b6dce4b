#include "plain-reader.h"

#include <algorithm>
#include <string_view>

namespace {

std::string with_equal_line_ends(const std::string& bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool is_second_of_pair = bytes[i] == '\n' && i != 0 && bytes[i - 1] == '\r';
    if (!is_second_of_pair) text += bytes[i] == '\r' ? '\n' : bytes[i];
  }
  return text;
}

constexpr std::string_view white_space = " \t\n\v\f";

class CPlainReader {
 public:
  explicit CPlainReader(const std::string& bytes) : text(with_equal_line_ends(bytes)) {}

  plain_file read() {
    do read_record();
    while (at < text.size() && !file.has_format_error);
    return file;
  }

 private:
  std::string text;
  std::size_t at = 0;
  plain_record record;
  plain_file file;

  unsigned line_of(std::size_t position) const {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(position);
    return 1 + static_cast<unsigned>(std::count(text.begin(), end, '\n'));
  }

  void fail() {
    file.has_format_error = true;
    file.error_line = line_of(at);
  }

  void skip_white_space() { at = std::min(text.find_first_not_of(white_space, at), text.size()); }
  std::size_t end_of_line() const { return std::min(text.find('\n', at), text.size()); }

  void read_record() {
    skip_white_space();
    while (at < text.size() && text[at] == '#') {
      at = end_of_line();
      skip_white_space();
    }
    if (at == text.size() || text[at] != '>') return fail();
    ++at;
    record.symbols.clear();
    read_header();
    while (at < text.size() && text[at] != '>') {
      if (!read_line()) return fail();
    }
    record.line = line_of(at);
    file.records.push_back(record);
  }

  // A file that ends directly after the '>' leaves the names of the record before.
  void read_header() {
    const std::size_t end = end_of_line();
    record.full_name = text.substr(at, end - at);
    const bool is_cut_off = end == text.size();
    at = is_cut_off ? end : end + 1;
    if (is_cut_off && record.full_name.empty()) return;
    const std::string& header = record.full_name;
    const std::size_t blank = header.find(' ');
    record.short_name = header.substr(0, blank);
    if (blank == std::string::npos) return;
    const std::size_t after = header.find_first_not_of(' ', blank);
    record.description = after == std::string::npos ? "" : header.substr(after);
  }

  // Returns false at a byte that no sequence may hold. As the last byte of the file such a byte is passed over: the end
  // of the file, which is met in looking for the next line, takes the place of the error.
  bool read_line() {
    for (; at < text.size() && text[at] != '\n'; ++at) {
      const char c = text[at];
      const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
      if (std::string_view("ACGT").find(upper) != std::string_view::npos) {
        record.symbols += upper;
      } else if (upper == 'U') {
        record.symbols += 'T';
      } else if (std::string_view("NXRYKMSWBDHV?").find(upper) != std::string_view::npos) {
        record.symbols += 'N';
      } else if ((white_space.find(c) == std::string_view::npos && c != '-' && c != '*') && at + 1 != text.size()) {
        return false;
      }
    }
    if (at < text.size()) ++at;
    return true;
  }
};

}  // namespace

plain_file read_plainly(const std::string& bytes) { return CPlainReader(bytes).read(); }
