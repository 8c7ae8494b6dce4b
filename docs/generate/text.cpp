#include "text.h"

#include <cctype>
#include <sstream>

namespace {

bool begins_sentence(const std::string& word) {
  const auto first = static_cast<unsigned char>(word.front());
  return std::isupper(first) != 0 || first == '"' || word.ends_with(':');
}

// A full stop ends a sentence when what follows begins with a capital letter, or is the first of a list of values
// ("0: this, 1: that"). That of "e.g." ends none.
bool ends_sentence(const std::string& word, const std::string& next) {
  return word.ends_with('.') && word.find('.') + 1 == word.size() && begins_sentence(next);
}

}  // namespace

std::string with_replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::string joined(const std::vector<std::string>& parts, const std::string& separator) {
  std::string whole;
  for (const std::string& part : parts) {
    if (&part != parts.data()) whole += separator;
    whole += part;
  }
  return whole;
}

std::vector<std::string> words_of(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

std::vector<std::string> filled_lines(const std::string& text, std::size_t width) {
  std::vector<std::string> lines;
  bool begins_line = true;
  const std::vector<std::string> words = words_of(text);
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (begins_line || lines.back().size() + 1 + words[i].size() > width) {
      lines.push_back(words[i]);
    } else {
      lines.back() += ' ' + words[i];
    }
    begins_line = i + 1 < words.size() && ends_sentence(words[i], words[i + 1]);
  }
  return lines;
}

std::string shell_quoted(const std::string& text) { return "'" + with_replaced(text, "'", "'\\''") + "'"; }
