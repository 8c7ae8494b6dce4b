#include "comparison.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <string_view>
#include <vector>

#include "printable-text.h"

namespace differential {

namespace {

// The length of "hours.minutes.seconds - # " at the begin of the line, or 0.
std::size_t length_of_time(std::string_view line) {
  std::size_t at = 0;
  for (int field = 0; field < 3; ++field) {
    const std::size_t begin = at;
    while (at < line.size() && std::isdigit(static_cast<unsigned char>(line[at])) != 0) ++at;
    if (at - begin < 2) return 0;
    if (field < 2 && (at == line.size() || line[at++] != '.')) return 0;
  }
  return line.substr(at).starts_with(" - # ") ? at : 0;
}

std::string_view line_at(std::string_view text, std::size_t position) {
  if (position >= text.size()) return position == text.size() ? "(end of the text)" : "";
  const std::size_t begin = position == 0 ? 0 : text.rfind('\n', position - 1) + 1;
  return text.substr(begin, std::min(text.find('\n', position), text.size()) - begin);
}

std::string describe(const std::string& program, const std::string& reference) {
  const auto [at, other] = std::mismatch(program.begin(), program.end(), reference.begin(), reference.end());
  const std::size_t position = static_cast<std::size_t>(at - program.begin());
  const auto line = std::count(program.begin(), at, '\n') + 1;
  return "first at line " + std::to_string(line) + "\n  program:   " + printable(line_at(program, position)) +
         "\n  reference: " + printable(line_at(reference, position));
}

std::string status_text(const run_outcome& outcome) {
  if (!outcome.ended) return "killed at the time limit";
  if (outcome.status < 0) return "signal " + std::to_string(-outcome.status);
  return std::to_string(outcome.status);
}

std::optional<difference> compare_status(const run_outcome& program, const run_outcome& reference) {
  if (program.ended == reference.ended && program.status == reference.status) return std::nullopt;
  return difference{"exit status", "program " + status_text(program) + ", reference " + status_text(reference)};
}

std::optional<difference> compare_file(const std::string& name, const run_outcome& program,
                                       const run_outcome& reference) {
  const auto a = program.files.find(name);
  const auto b = reference.files.find(name);
  if (a == program.files.end()) return difference{name, "written by the reference only"};
  if (b == reference.files.end()) return difference{name, "written by the program only"};
  const bool has_times = name == "stderr";
  const std::string& text_a = has_times ? without_times(a->second) : a->second;
  const std::string& text_b = has_times ? without_times(b->second) : b->second;
  if (text_a == text_b) return std::nullopt;
  return difference{name, describe(text_a, text_b)};
}

// stderr and stdout first, then the other files in the order of their names.
std::vector<std::string> names_of_files(const run_outcome& program, const run_outcome& reference) {
  std::set<std::string> names;
  for (const auto& [name, text] : program.files) names.insert(name);
  for (const auto& [name, text] : reference.files) names.insert(name);
  names.erase("stderr");
  names.erase("stdout");
  std::vector<std::string> ordered{"stderr", "stdout"};
  ordered.insert(ordered.end(), names.begin(), names.end());
  return ordered;
}

}  // namespace

std::string without_times(const std::string& standard_error) {
  std::string text;
  std::string_view rest = standard_error;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size() - 1) + 1;
    const std::size_t time = length_of_time(rest.substr(0, end));
    if (time != 0) text += "hh.mm.ss";
    text += rest.substr(time, end - time);
    rest.remove_prefix(end);
  }
  return text;
}

std::optional<difference> compare(const run_outcome& program, const run_outcome& reference) {
  if (auto found = compare_status(program, reference)) return found;
  for (const std::string& name : names_of_files(program, reference)) {
    if (auto found = compare_file(name, program, reference)) return found;
  }
  return std::nullopt;
}

}  // namespace differential
