#include "shortened-text.h"

std::string shortened_text(std::string_view text, std::int64_t mark) {
  if (text.size() <= longest_name) return std::string(text);
  std::size_t size = longest_name;
  while (size > longest_name - 4 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
  std::string shorter(text.substr(0, size));
  shorter += "...";
  if (mark != 0) shorter += '#' + std::to_string(mark);
  return shorter;
}
