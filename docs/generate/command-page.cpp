// From the rows of an option table to what the man page and the completions tell about an option.

#include "command-page.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <type_traits>
#include <variant>

namespace {

// The help texts list the values of an option as "0: this, 1: that." or "word: This. other: That."

bool lists_value(const std::string& help, const std::string& word) {
  return help.find(" " + word + ": ") != std::string::npos;
}

// What stands behind "word: ", up to the end of the sentence or to the next value.
std::string meaning_in(const std::string& help, const std::string& word, const std::string& next_word) {
  const std::size_t begin = help.find(" " + word + ": ");
  if (begin == std::string::npos) return "";
  const std::string text = help.substr(begin + word.size() + 3);
  const std::size_t sentence_end = text.find(". ");
  const std::size_t next = text.find(", " + next_word + ": ");
  std::string meaning = text.substr(0, std::min(sentence_end, next));
  if (meaning.ends_with('.')) meaning.pop_back();
  return meaning;
}

std::vector<option_choice> numbered_choices(const std::string& help) {
  std::vector<option_choice> choices;
  for (int number = 0; lists_value(help, std::to_string(number)); ++number) {
    const std::string word = std::to_string(number);
    choices.push_back({word, meaning_in(help, word, std::to_string(number + 1))});
  }
  return choices;
}

std::vector<option_choice> choices_of(const option_row& row) {
  if (std::holds_alternative<std::string*>(row.destination)) return word_choices(row.help, search_mode_words());
  if (std::holds_alternative<int*>(row.destination)) return numbered_choices(row.help);
  return {};
}

std::string default_sentence(const option_row& row) {
  if (std::string(row.help).find("Default") != std::string::npos) return "";
  std::ostringstream sentence;
  const auto write = [&](const auto* destination) {
    using value_type = std::remove_cvref_t<decltype(*destination)>;
    if constexpr (!std::is_same_v<value_type, bool> && !std::is_same_v<value_type, std::vector<std::string>>) {
      sentence << "Default: " << *destination << ".";
    }
  };
  std::visit(write, row.destination);
  return sentence.str();
}

bool is_plain_words(const option_row& row) {
  return std::holds_alternative<std::vector<std::string>*>(row.destination);
}

}  // namespace

std::vector<option_choice> word_choices(const std::string& help, std::span<const char* const> words) {
  std::vector<option_choice> choices;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string next = i + 1 < words.size() ? words[i + 1] : words[i];
    choices.push_back({words[i], meaning_in(help, words[i], next)});
  }
  return choices;
}

std::vector<documented_option> options_of_the_parser() {
  return {
      {"",
       "ignore_rest",
       "",
       {},
       "The same as \"--\": all words behind it are file names, also those that begin "
       "with \"-\".",
       ""},
      {"", "version", "", {}, "Displays version information and exits.", ""},
      {"h", "help", "", {}, "Displays usage information and exits.", ""},
  };
}

std::vector<documented_option> documented_options(std::span<const option_row> table) {
  std::vector<documented_option> options;
  for (auto row = table.rbegin(); row != table.rend(); ++row) {
    if (is_plain_words(*row)) continue;
    options.push_back(
        {row->short_name, row->long_name, value_label(*row), choices_of(*row), row->help, default_sentence(*row)});
  }
  return options;
}

bool takes_file(const documented_option& option) { return option.value == "file"; }

void add_to_option(command_page& page, const std::string& long_name, const std::string& sentences) {
  const auto option = std::ranges::find(page.options, long_name, &documented_option::long_name);
  if (option == page.options.end()) throw std::invalid_argument(page.name + " has no option --" + long_name);
  if (!option->addition.empty()) option->addition += ' ';
  option->addition += sentences;
}
