#include "option-parser.h"

#include <tclap/CmdLine.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "CCommandLineOutput.h"
#include "CFileNamesArg.h"
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

  void parse(std::span<const option_row> table, int argc, char** argv) {
    for (const option_row& row : table) {
      std::visit([&](auto destination) { declare(row, destination); }, row.destination);
    }
    command_line.parse(argc, argv);
    for (const auto& store : stores) store();
  }

 private:
  TCLAP::CmdLine command_line;
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
    constraints.push_back(std::make_unique<TCLAP::ValuesConstraint<std::string>>(words));
    add(std::make_unique<TCLAP::ValueArg<std::string>>(row.short_name, row.long_name, help_text(row), row.is_required,
                                                       default_word, constraints.back().get()),
        [destination, words](const std::string& value) {
          *destination.place = static_cast<int>(std::find(words.begin(), words.end(), value) - words.begin());
        });
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
  try {
    COptionParser(description, output).parse(table, argc, argv);
  } catch (const unwritten_help&) {
    std::exit(status_if_not_written);
  }
  for (const option_row& row : table) {
    const std::string complaint = complaint_about(row);
    std::fputs(complaint.c_str(), stderr);
    if (!complaint.empty()) return false;
  }
  return true;
}
