#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Names of more bytes than this are shortened: a page of a megabyte's header helps nobody.
constexpr std::size_t longest_name = 250;

// The text itself, or its first longest_name bytes (no character of UTF-8 is cut in two) and "...". `mark`, when not
// 0, is written after the dots, so that names which begin alike stay different.
std::string shortened_text(std::string_view text, std::int64_t mark = 0);
