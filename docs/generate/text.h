#pragma once

#include <string>
#include <vector>

// Small tools for plain text that the writers share.

// The text with every occurrence of `from` replaced; `from` must not be empty.
std::string with_replaced(std::string text, const std::string& from, const std::string& to);

// The parts with the separator between them.
std::string joined(const std::vector<std::string>& parts, const std::string& separator);

// The words between the blanks of a text.
std::vector<std::string> words_of(const std::string& text);

// Lines of whole sentences, broken at blanks so that none exceeds `width` bytes unless a single word does.
std::vector<std::string> filled_lines(const std::string& text, std::size_t width);

// The text as one word of a shell, in single quotes.
std::string shell_quoted(const std::string& text);
