#pragma once

#include <cstdio>

// Writes one text the way formatted printing without arguments would, and safely: "%%" gives one '%', any other
// complete conversion prints nothing, everything else stands as it is.
void print_interpreted(std::FILE* out, const char* text);

// Writes the texts in turn, each interpreted as above.
template <typename... Texts>
void PrintMessage(std::FILE* out, Texts... texts) {
  (print_interpreted(out, texts), ...);
}
