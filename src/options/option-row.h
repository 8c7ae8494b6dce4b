#ifndef QUARVO_OPTION_ROW_H
#define QUARVO_OPTION_ROW_H

#include <span>
#include <string>
#include <variant>
#include <vector>

// The rows of the companions' option tables.

// What an option's value is, and where it goes. The list takes the plain words of the command line.
using convert_destination = std::variant<std::string*, std::vector<std::string>*>;

struct convert_option_row {
  const char* short_name;  // one letter, or empty
  const char* long_name;
  convert_destination destination;
  const char* value_label;             // what the usage text calls the value
  std::span<const char* const> words;  // the values allowed; empty when the value is free
  bool is_required;
  const char* help;
};

#endif
