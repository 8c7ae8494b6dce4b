#pragma once

#include <span>
#include <string>
#include <vector>

#include "option-row.h"

// What is known about a command before it is written as a man page or a completion. All texts are plain: the writers
// quote what their formats need.

struct documented_option {
  std::string short_name = {};  // one letter, or empty; without dashes, as is the long name
  std::string long_name = {};
  std::string value = {};                     // what the usage text calls the value; empty for a switch
  std::span<const option_word> choices = {};  // empty when the value is free
  std::string summary = {};                   // a sentence
  std::string help = {};                      // the usage text; empty when it is the summary alone
  std::string addition = {};                  // sentences that the help text lacks: its default, its limits
};

// A plain word of the command line: a file name.
struct plain_word {
  std::string name;
  std::string what;
  bool is_optional;
};

// A term and what it means: a file, an exit status, an example.
struct explained_term {
  std::string term;
  std::string text;
};

struct command_page {
  std::string name;
  std::string version;
  std::string summary;  // after the name in lists of commands; no capital, no full stop
  std::vector<std::string> description;
  std::vector<documented_option> options;  // in the order of the usage text
  std::vector<plain_word> plain_words;
  std::string plain_words_help;
  std::vector<explained_term> exit_statuses;
  std::vector<explained_term> files;
  std::vector<explained_term> examples;  // the term is the command line
  std::vector<std::string> see_also;     // names of commands
  std::string further_reading;
};

// A page with what the table of the command tells. The destinations must hold the defaults.
command_page page_of(const char* name, std::span<const option_row> table);

// What a companion may leave behind.
explained_term unfinished_output();

// Whether the option's value is the name of a file.
bool takes_file(const documented_option& option);

// The pages of the commands.
command_page quarvo_page();
command_page quarvo_convert_page();
command_page quarvo_report_page();
command_page quarvo_scan_page();
