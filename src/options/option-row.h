#pragma once

#include <limits>
#include <span>
#include <string>
#include <variant>
#include <vector>

// The rows of option tables. Parser, checks, usage text, man page and completions of a program come from its table.

// One of the few values that an option takes.
struct option_word {
  const char* word;  // for a number, its digits; these count from 0
  const char* meaning;
};

// Takes the place of the option's word among the words of its row.
struct word_destination {
  int* place;
};

// What an option's value is, and where it goes. A bool is a switch, which turns its destination to the opposite of the
// default; the list takes the plain words of the command line.
using option_destination =
    std::variant<bool*, int*, unsigned*, float*, std::string*, std::vector<std::string>*, word_destination>;

// What the usage text calls the value of an option that is the name of a file.
inline constexpr const char* file_label = "file";

struct option_row {
  const char* short_name = "";  // one letter, or empty
  const char* long_name = "";
  option_destination destination;  // holds the default before parsing; texts and lists have none
  const char* label = "";          // what the usage text calls a text, or the plain words
  std::span<const option_word> words = {};
  bool is_required = false;
  bool may_be_dash = false;  // of plain words: '-' is one, for standard input

  // Limits of a number, or of how many plain words there are; those of a number with words are the words.
  long long least = std::numeric_limits<long long>::min();
  long long most = std::numeric_limits<long long>::max();
  const char* complaint = nullptr;  // about a value beyond them; without one, the nearest limit is taken

  // The usage text: a sentence on what the option is, and more, in which {words} and {default} stand for the words with
  // their meanings and for the default.
  const char* summary = "";
  const char* help = "";
  const char* default_name = nullptr;  // what the help calls the default, when not by its value
  const char* note = "";               // what the man page adds
};

bool is_switch(const option_row& row);
bool is_plain_words(const option_row& row);

std::string help_text(const option_row& row);

// What the usage text calls an option's value ("int", "float", ...); empty for a switch.
std::string value_label(const option_row& row);

// Sentences on the default and the limits, for manuals: what the help text does not tell. The destination must hold the
// default.
std::string further_sentences(const option_row& row);

// Checks the value in the row's destination. Returns what is wrong with it, in lines for the user; empty when nothing
// is or when the value was moved to a limit.
std::string complaint_about(const option_row& row);
