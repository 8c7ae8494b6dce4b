#ifndef QUARVO_GLOBAL_TYPES_AND_PARAMETERS_OPTIONS_H
#define QUARVO_GLOBAL_TYPES_AND_PARAMETERS_OPTIONS_H

#include <span>
#include <string>
#include <variant>
#include <vector>

// The one table of command-line options: the parser is built from it, and so is all that documents the options.

// Where the parser leaves what has no parameter of the same form; the checks turn these into parameters.
struct parsed_option_values {
  bool prefer_shorter_repeats = false;
  int report_unit = 0;
  int N_perfection_mode = 0;
  int print_repeat_seq_mode = 0;
  int output_format = 0;
  std::string search_mode;
  std::vector<std::string> iofiles;
};
extern parsed_option_values parsed_options;

// What an option's value is, and where it goes. A bool is a switch, which turns its destination to the opposite of the
// default; a string must be one of search_mode_words; the list takes the plain words of the command line.
using option_destination = std::variant<bool*, int*, unsigned*, float*, std::string*, std::vector<std::string>*>;

struct option_row {
  const char* short_name;  // one letter, or empty
  const char* long_name;
  option_destination destination;  // holds the default before parsing
  const char* help;
};

// All options in the order of the usage text. The plain words come last.
std::span<const option_row> option_table();

// The words that searchMode takes; the index of a word is its search mode.
std::span<const char* const> search_mode_words();

// Sets the destinations that are no parameters to their defaults. To be called behind init_param.
void init_parsed_options();

// What the usage text calls an option's value ("int", "float", ...); empty for a switch.
const char* value_label(const option_row& option);

#endif
