#include "sequence-names.h"

#include <algorithm>
#include <functional>

#include "shown-text.h"

namespace {

bool may_stand_in_gff3(char c) {
  constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.:^*$@!+_?-|";
  return allowed.find(c) != std::string_view::npos;
}

}  // namespace

std::string_view plain_name(std::string_view name) { return name.substr(0, name.find_first_of(" \t\v\f\r\n")); }

std::string gff3_name(std::string_view name) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string escaped;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (may_stand_in_gff3(c)) {
      escaped.push_back(c);
    } else {
      escaped.append({'%', digits[byte / 16U], digits[byte % 16U]});
    }
  }
  return escaped;
}

bool is_bed_name(std::string_view name) {
  return !name.empty() && name.front() != '#' && !name.starts_with("track") && !name.starts_with("browser");
}

std::string unsuited_name(const results_sequence& sequence, const std::string& format) {
  return "Sorry, sequence " + std::to_string(sequence.ordinal) + " of these results has the name\n   \"" +
         shown(plain_name(sequence.name)) + "\"\nwhich cannot stand in " + format +
         ": other programs would pass its repeats over. Please rename it, or convert to json.\n";
}

std::string repeated_name(const results_sequence& sequence) {
  return "Sorry, the name\n   \"" + shown(plain_name(sequence.name)) +
         "\"\nhas come before: other programs would take two sequences for one. Please search a file in which all "
         "names\ndiffer up to their first white space, or convert to json, which numbers the sequences.\n";
}

bool CNameRegister::add(std::string_view name) { return seen.insert(std::hash<std::string_view>{}(name)).second; }
