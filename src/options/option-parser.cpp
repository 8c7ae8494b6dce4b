#include "option-parser.h"

#include <strings.h>
#include <tclap/CmdLine.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "CCommandLineOutput.h"
#include "CFileNamesArg.h"
#include "nearest-word.h"
#include "quarvo-version.h"
#include "shown-text.h"

namespace {

// Words of the command line are shown as they may be on a terminal.
class CShownOutput : public CCommandLineOutput {
 public:
  void failure(TCLAP::CmdLineInterface& command_line, TCLAP::ArgException& why) override {
    const std::ostringstream text;
    std::streambuf* const terminal = std::cerr.rdbuf(text.rdbuf());
    try {
      CCommandLineOutput::failure(command_line, why);
    } catch (const TCLAP::ExitException&) {
      std::cerr.rdbuf(terminal);
      std::cerr << shown_lines(text.str());
      throw;
    }
  }
};

// A long option or a word that there is none of; lines for the user.
struct misspelt {
  std::string complaint;
};

misspelt misspelt_as(const std::string& what, const std::string& word, const std::vector<std::string>& words,
                     const std::string& all) {
  const std::string nearest = nearest_word(word, words);
  return {"Sorry, " + what + "." + (nearest.empty() ? "" : " Did you mean " + nearest + "?") + "\n" + all + "\n"};
}

// The place of a word among others, capital or small, or their number where it is none of them.
int place_of(const std::string& word, const std::vector<std::string>& words) {
  const auto found =
      std::ranges::find_if(words, [&](const std::string& one) { return strcasecmp(one.c_str(), word.c_str()) == 0; });
  return static_cast<int>(found - words.begin());
}

// Takes capital and small letters as the same, and raises what is wrong with a word, in place of what the library would
// say.
class CNearestWord : public TCLAP::ValuesConstraint<std::string> {
 public:
  CNearestWord(const char* its_option, const std::vector<std::string>& words)
      : TCLAP::ValuesConstraint<std::string>(words), option(its_option), all(words) {}

  bool check(const std::string& word) const override {
    if (place_of(word, all) != static_cast<int>(all.size())) return true;
    std::string listed;
    for (const std::string& one : all) listed += (listed.empty() ? "" : ", ") + one;
    throw misspelt_as("--" + option + " cannot be \"" + shown(word) + "\"", word, all, "It may be: " + listed);
  }

 private:
  std::string option;
  std::vector<std::string> all;
};

// Raises what is wrong with the first long option that the table has not.
void look_for_unknown_options(std::span<const option_row> table, int argc, char** argv) {
  std::vector<std::string> names{"--help", "--version", "--ignore_rest"};
  for (const option_row& row : table) names.push_back(std::string("--") + row.long_name);
  for (const std::string word : std::span(argv, static_cast<std::size_t>(argc)).subspan(argc == 0 ? 0 : 1)) {
    if (word == "--" || word == "--ignore_rest") return;
    if (!word.starts_with("--")) continue;
    const std::string name = word.substr(0, word.find_first_of("= "));
    if (std::ranges::find(names, name) != names.end()) continue;
    const std::string program = std::filesystem::path(argv[0]).filename();
    throw misspelt_as("there is no option " + shown(name), name, names, "All options: " + shown(program) + " --help");
  }
}

class CNoOutput : public TCLAP::CmdLineOutput {
 public:
  void usage(TCLAP::CmdLineInterface& /*command_line*/) override {}
  void version(TCLAP::CmdLineInterface& /*command_line*/) override {}
  void failure(TCLAP::CmdLineInterface& /*command_line*/, TCLAP::ArgException& /*why*/) override {}
};

// The library's arguments for an option table, and the copying of their values to the table's destinations.
class COptionParser {
 public:
  COptionParser(const char* description, TCLAP::CmdLineOutput& output)
      : command_line(description, ' ', quarvo_version) {
    command_line.setOutput(&output);
  }

  // Lets errors, help and version raise the library's exceptions. Without it they end the process inside the library.
  void let_exceptions_through() { command_line.setExceptionHandling(false); }

  void tell_nearest_words() { tells_nearest = true; }

  void parse(std::span<const option_row> table, int argc, char** argv) {
    for (const option_row& row : table) {
      std::visit([&](auto destination) { declare(row, destination); }, row.destination);
    }
    command_line.parse(argc, argv);
    for (const auto& store : stores) store();
  }

 private:
  TCLAP::CmdLine command_line;
  bool tells_nearest = false;
  std::vector<std::unique_ptr<TCLAP::ValuesConstraint<std::string>>> constraints;
  std::vector<std::unique_ptr<TCLAP::Arg>> arguments;
  std::vector<std::function<void()>> stores;

  template <typename Argument, typename Store>
  void add(std::unique_ptr<Argument> argument, Store store) {
    command_line.add(*argument);
    stores.emplace_back([parsed = argument.get(), store] { store(parsed->getValue()); });
    arguments.push_back(std::move(argument));
  }

  void declare(const option_row& row, bool* destination) {
    add(std::make_unique<TCLAP::SwitchArg>(row.short_name, row.long_name, help_text(row), *destination),
        [destination](bool value) { *destination = value; });
  }

  template <typename Value>
  void declare(const option_row& row, Value* destination) {
    if constexpr (std::is_same_v<Value, std::string>) destination->clear();
    add(std::make_unique<TCLAP::ValueArg<Value>>(row.short_name, row.long_name, help_text(row), row.is_required,
                                                 *destination, value_label(row)),
        [destination](const Value& value) { *destination = value; });
  }

  void declare(const option_row& row, word_destination destination) {
    std::vector<std::string> words;
    for (const option_word& word : row.words) words.emplace_back(word.word);
    const std::string& default_word = words[static_cast<std::size_t>(*destination.place)];
    constraints.push_back(tells_nearest ? std::make_unique<CNearestWord>(row.long_name, words)
                                        : std::make_unique<TCLAP::ValuesConstraint<std::string>>(words));
    add(std::make_unique<TCLAP::ValueArg<std::string>>(row.short_name, row.long_name, help_text(row), row.is_required,
                                                       default_word, constraints.back().get()),
        [destination, words](const std::string& value) { *destination.place = place_of(value, words); });
  }

  void declare(const option_row& row, std::vector<std::string>* destination) {
    destination->clear();
    auto names = std::make_unique<CFileNamesArg>(row.long_name, help_text(row), row.is_required, value_label(row));
    names->may_be_dash = row.may_be_dash;
    add(std::move(names), [destination](const std::vector<std::string>& values) { *destination = values; });
  }
};

}  // namespace

void parse_options(std::span<const option_row> table, const char* description, int argc, char** argv) {
  CCommandLineOutput output;
  COptionParser(description, output).parse(table, argc, argv);
}

bool parse_silently(std::span<const option_row> table, int argc, char** argv) {
  CNoOutput output;
  COptionParser parser("", output);
  parser.let_exceptions_through();
  try {
    parser.parse(table, argc, argv);
  } catch (const TCLAP::ArgException&) {
    return false;
  } catch (const TCLAP::ExitException&) {
    return false;
  }
  return true;
}

bool read_options(std::span<const option_row> table, const char* description, int status_if_not_written, int argc,
                  char** argv) {
  CShownOutput output;
  COptionParser parser(description, output);
  parser.tell_nearest_words();
  try {
    look_for_unknown_options(table, argc, argv);
    parser.parse(table, argc, argv);
  } catch (const unwritten_help&) {
    std::exit(status_if_not_written);
  } catch (const misspelt& found) {
    std::fputs(found.complaint.c_str(), stderr);
    return false;
  }
  for (const option_row& row : table) {
    const std::string complaint = complaint_about(row);
    std::fputs(complaint.c_str(), stderr);
    if (!complaint.empty()) return false;
  }
  return true;
}
