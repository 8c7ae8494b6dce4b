// The command line of quarvo-differential: options with one value each, and modes.
#pragma once

#include <charconv>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace differential {

extern const char* const usage;

// A wrong command line throws std::invalid_argument: numbers when they are asked for, everything else when parsed.
struct command {
  std::map<std::string, std::string> options;
  std::vector<std::string> modes;

  std::string text(const std::string& name, const std::string& otherwise) const {
    const auto found = options.find(name);
    return found == options.end() ? otherwise : found->second;
  }

  template <typename Number>
  Number number(const std::string& name, Number otherwise) const {
    const auto found = options.find(name);
    if (found == options.end()) return otherwise;
    const char* const end = found->second.data() + found->second.size();
    Number value{};
    if (const auto result = std::from_chars(found->second.data(), end, value);
        result.ec != std::errc() || result.ptr != end) {
      throw std::invalid_argument("not a number: " + name + ' ' + found->second);
    }
    return value;
  }
};

command parse_command_line(int argc, char** argv);

}  // namespace differential
