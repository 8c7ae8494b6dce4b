// From the rows of an option table to what the man page and the completions tell about an option.

#include "command-page.h"

#include "quarvo-version.h"

namespace {

// Last row first as the usage text has them, without the row of the plain words; and those that the parser adds to
// every table.
std::vector<documented_option> documented_options(std::span<const option_row> table) {
  std::vector<documented_option> options;
  for (auto row = table.rbegin(); row != table.rend(); ++row) {
    if (is_plain_words(*row)) continue;
    options.push_back({row->short_name, row->long_name, value_label(*row), row->words, row->summary, help_text(*row),
                       further_sentences(*row)});
  }
  options.push_back(
      {.long_name = "ignore_rest",
       .summary = "The same as \"--\": all words after it are file names, also those that begin with \"-\"."});
  options.push_back({.long_name = "version", .summary = "Displays version information and exits."});
  options.push_back({.short_name = "h", .long_name = "help", .summary = "Displays usage information and exits."});
  return options;
}

}  // namespace

command_page page_of(const char* name, std::span<const option_row> table) {
  command_page page;
  page.name = name;
  page.version = quarvo_version;
  page.options = documented_options(table);
  page.plain_words_help = help_text(table.back());
  return page;
}

explained_term unfinished_output() {
  return {
      ".quarvo-unfinished-*",
      "Left beside the output by a run that SIGKILL ended, on file systems that have no files without a name; it may "
      "be removed."};
}

bool takes_file(const documented_option& option) { return option.value == file_label; }
