#include "print-message.h"

#include <cstring>

namespace {

bool is_one_of(char c, const char* set) { return c != '\0' && std::strchr(set, c) != nullptr; }

const char* skip_number(const char* text) {
  if (*text == '*') return text + 1;
  while (is_one_of(*text, "0123456789")) ++text;
  return text;
}

// The end of the conversion that begins at the '%' at `text`, or `text` itself when none is complete there.
const char* conversion_end(const char* text) {
  const char* p = text + 1;
  while (is_one_of(*p, "-+ #0")) ++p;
  p = skip_number(p);
  if (*p == '.') p = skip_number(p + 1);
  if (std::strncmp(p, "hh", 2) == 0 || std::strncmp(p, "ll", 2) == 0) {
    p += 2;
  } else if (is_one_of(*p, "hljztL")) {
    ++p;
  }
  return is_one_of(*p, "diouxXeEfFgGaAcspn") ? p + 1 : text;
}

}  // namespace

void print_interpreted(std::FILE* out, const char* text) {
  while (*text != '\0') {
    const std::size_t plain = std::strcspn(text, "%");
    std::fwrite(text, 1, plain, out);
    text += plain;
    if (*text == '\0') return;
    if (text[1] == '%') {
      std::fputc('%', out);
      text += 2;
    } else if (const char* end = conversion_end(text); end != text) {
      text = end;
    } else {
      std::fputc('%', out);
      ++text;
    }
  }
}
