// The completion for zsh: the options as arguments of its function _arguments.

#include <sstream>

#include "text.h"
#include "writers.h"

namespace {

// The text with a backslash before each of the characters.
std::string with_backslashes(std::string text, const std::string& characters) {
  for (const char c : characters) text = with_replaced(text, std::string(1, c), std::string("\\") + c);
  return text;
}

std::string choice_list(const documented_option& option) {
  std::vector<std::string> words;
  for (const option_word& choice : option.choices) {
    words.push_back(std::string(choice.word) + "\\:" + with_backslashes(choice.meaning, "\\\"'`$&;|<>()[]{}*?~#:, "));
  }
  return "((" + joined(words, " ") + "))";
}

// The message and the action for the value; an action of one blank offers nothing and shows the message.
std::string value_part(const documented_option& option) {
  if (option.value.empty()) return "";
  if (takes_file(option)) return ":" + option.value + ":_files";
  if (option.choices.empty()) return ":" + option.value + ": ";
  return ":" + option.long_name + ":" + choice_list(option);
}

// What must not stand beside the option: itself, or anything when it ends the program at once.
std::string exclusions(const documented_option& option) {
  if (option.long_name == "help" || option.long_name == "version") return "(- *)";
  const std::string both = "--" + option.long_name;
  return option.short_name.empty() ? "(" + both + ")" : "(-" + option.short_name + " " + both + ")";
}

void write_option(std::ostream& out, const documented_option& option) {
  std::string summary = option.summary;
  if (summary.ends_with('.')) summary.pop_back();
  const std::string after_name = "[" + with_backslashes(summary, "\\[]:") + "]" + value_part(option);
  if (!option.short_name.empty()) {
    out << " \\\n  " << shell_quoted(exclusions(option) + "-" + option.short_name + after_name);
  }
  out << " \\\n  " << shell_quoted(exclusions(option) + "--" + option.long_name + after_name);
}

}  // namespace

std::string zsh_completion(const command_page& page) {
  std::ostringstream out;
  out << "#compdef " << page.name << "\n"
      << "# Completion of " << page.name << " for zsh.\n"
      << "# Written by quarvo-generate from the option table of the program. Do not edit.\n\n"
      << "_arguments -S";
  for (const documented_option& option : page.options) write_option(out, option);
  std::size_t position = 1;
  for (const plain_word& word : page.plain_words) {
    out << " \\\n  " << shell_quoted(std::to_string(position++) + ":" + word.what + ":_files");
  }
  out << "\n";
  return out.str();
}
