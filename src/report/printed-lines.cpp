#include "printed-lines.h"

namespace {

std::string between_flanks(const results_repeat& repeat, const std::string& text) {
  return repeat.left_flank.has_value() ? *repeat.left_flank + ":" + text + ":" + repeat.right_flank.value_or("") : text;
}

// The same, with blanks for the flanks and their colons.
std::string between_blanks(const results_repeat& repeat, const std::string& text) {
  if (!repeat.left_flank.has_value()) return text;
  return std::string(repeat.left_flank->size() + 1, ' ') + text +
         std::string(repeat.right_flank.value_or("").size() + 1, ' ');
}

}  // namespace

std::vector<std::string> printed_lines(const results_repeat& repeat) {
  if (repeat.alignment.has_value()) {
    const auto& lines = *repeat.alignment;
    const bool is_perfect = lines.sequence == lines.unit && lines.markers.find_first_not_of('|') == std::string::npos;
    if (is_perfect && !repeat.left_flank.has_value()) return {lines.sequence};
    return {between_flanks(repeat, lines.sequence), between_blanks(repeat, lines.markers),
            between_blanks(repeat, lines.unit)};
  }
  if (repeat.sequence.has_value()) return {between_flanks(repeat, *repeat.sequence)};
  return {};
}
