#include "option-parser.h"

#include <tclap/CmdLine.h>

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

// The library's arguments for an option table.
class COptionParser {
 public:
  explicit COptionParser(const char* description) : command_line(description, ' ', quarvo_version) {}

  // Errors, help and version end the process inside the library.
  void parse(std::span<const convert_option_row> table, int argc, char** argv) {
    for (const convert_option_row& option : table) {
      std::visit([&](auto* destination) { declare(option, destination); }, option.destination);
    }
    command_line.setOutput(&output);
    command_line.parse(argc, argv);
    for (const auto& store : stores) store();
  }

 private:
  CShownOutput output;
  TCLAP::CmdLine command_line;
  std::vector<std::unique_ptr<TCLAP::ValuesConstraint<std::string>>> constraints;
  std::vector<std::unique_ptr<TCLAP::Arg>> arguments;
  std::vector<std::function<void()>> stores;

  template <typename Argument, typename Value>
  void add(std::unique_ptr<Argument> argument, Value* destination) {
    command_line.add(*argument);
    stores.emplace_back([parsed = argument.get(), destination] { *destination = parsed->getValue(); });
    arguments.push_back(std::move(argument));
  }

  void declare(const convert_option_row& option, std::string* destination) {
    using TextArg = TCLAP::ValueArg<std::string>;
    destination->clear();
    if (option.words.empty()) {
      add(std::make_unique<TextArg>(option.short_name, option.long_name, option.help, option.is_required, "",
                                    option.value_label),
          destination);
      return;
    }
    std::vector<std::string> words(option.words.begin(), option.words.end());
    constraints.push_back(std::make_unique<TCLAP::ValuesConstraint<std::string>>(words));
    add(std::make_unique<TextArg>(option.short_name, option.long_name, option.help, option.is_required, "",
                                  constraints.back().get()),
        destination);
  }

  void declare(const convert_option_row& option, std::vector<std::string>* destination) {
    destination->clear();
    add(std::make_unique<CFileNamesArg>(option.long_name, option.help, option.is_required, option.value_label),
        destination);
  }
};

}  // namespace

void parse_options(std::span<const convert_option_row> table, const char* description, int status_if_not_written,
                   int argc, char** argv) {
  try {
    COptionParser(description).parse(table, argc, argv);
  } catch (const unwritten_help&) {
    std::exit(status_if_not_written);
  }
}
