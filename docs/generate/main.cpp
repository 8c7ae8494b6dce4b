// Writes the man page or a completion of a command.
//
//   quarvo-generate man|bash|zsh COMMAND DATE FILE

#include <array>
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

#include "command-page.h"
#include "writers.h"

namespace {

struct command_row {
  const char* name;
  command_page (*page)();
};

constexpr std::array<command_row, 4> commands{{{"quarvo", quarvo_page},
                                               {"quarvo-convert", quarvo_convert_page},
                                               {"quarvo-report", quarvo_report_page},
                                               {"quarvo-scan", quarvo_scan_page}}};

command_page page_of(const std::string& name) {
  for (const command_row& command : commands) {
    if (name == command.name) return command.page();
  }
  throw std::invalid_argument("no command is named " + name);
}

std::string document(const std::string& kind, const command_page& page, const std::string& date) {
  if (kind == "man") return man_page(page, date);
  if (kind == "bash") return bash_completion(page);
  if (kind == "zsh") return zsh_completion(page);
  throw std::invalid_argument("no document is named " + kind);
}

void write(const std::string& text, const std::string& file) {
  std::ofstream out(file, std::ios::binary);
  out << text;
  out.close();
  if (!out) throw std::runtime_error("could not write " + file);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) {
    std::fputs("usage: quarvo-generate man|bash|zsh COMMAND DATE FILE\n", stderr);
    return 2;
  }
  try {
    write(document(argv[1], page_of(argv[2]), argv[3]), argv[4]);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "quarvo-generate: %s\n", e.what());
    return 1;
  }
  return 0;
}
