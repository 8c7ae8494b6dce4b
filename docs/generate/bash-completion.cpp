// The completion for bash: a function that looks at the word before the cursor.

#include <sstream>

#include "text.h"
#include "writers.h"

namespace {

std::vector<std::string> spellings(const documented_option& option) {
  std::vector<std::string> names;
  if (!option.short_name.empty()) names.push_back("-" + option.short_name);
  names.push_back("--" + option.long_name);
  return names;
}

std::string pattern(const documented_option& option) { return joined(spellings(option), " | "); }

std::string choice_words(const documented_option& option) {
  std::vector<std::string> words;
  for (const option_word& choice : option.choices) words.emplace_back(choice.word);
  return joined(words, " ");
}

std::string choices_case(const documented_option& option) {
  return "    " + pattern(option) + ")\n      mapfile -t COMPREPLY < <(compgen -W '" + choice_words(option) +
         "' -- \"$current\")\n      return\n      ;;\n";
}

// What is done after the options with a free value that is the name of a file, or after those where it is none.
std::string free_values_case(const command_page& page, bool is_file, const std::string& action) {
  std::vector<std::string> patterns;
  for (const documented_option& option : page.options) {
    const bool is_free = !option.value.empty() && option.choices.empty();
    if (is_free && takes_file(option) == is_file) patterns.push_back(pattern(option));
  }
  if (patterns.empty()) return "";
  return "    " + joined(patterns, " | \\\n      ") + ")\n" + action + "      return\n      ;;\n";
}

std::string all_spellings(const command_page& page) {
  std::vector<std::string> names;
  for (const documented_option& option : page.options) {
    for (const std::string& name : spellings(option)) names.push_back(name);
  }
  return joined(names, "\n        ");
}

}  // namespace

std::string bash_completion(const command_page& page) {
  const std::string function = "_" + with_replaced(page.name, "-", "_");
  std::ostringstream out;
  out << "# shellcheck shell=bash\n"
      << "# Completion of " << page.name << " for bash.\n"
      << "# Written by quarvo-generate from the option table of the program. Do not edit.\n\n"
      << function << "() {\n"
      << "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} i\n"
      << "  COMPREPLY=()\n\n"
      << "  # After \"--\" every word is a file name, which readline completes by itself.\n"
      << "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
      << "    if [[ ${COMP_WORDS[i]} == -- || ${COMP_WORDS[i]} == --ignore_rest ]]; then\n"
      << "      compopt -o default\n      return\n    fi\n  done\n\n"
      << "  case $previous in\n";
  for (const documented_option& option : page.options) {
    if (!option.choices.empty()) out << choices_case(option);
  }
  out << free_values_case(page, true, "      compopt -o default\n") << free_values_case(page, false, "") << "  esac\n\n"
      << "  if [[ $current == -* ]]; then\n"
      << "    local options=(\n        " << all_spellings(page) << "\n    )\n"
      << "    mapfile -t COMPREPLY < <(compgen -W \"${options[*]}\" -- \"$current\")\n"
      << "    return\n  fi\n"
      << "  compopt -o default\n}\n"
      << "complete -F " << function << " " << page.name << "\n";
  return out.str();
}
