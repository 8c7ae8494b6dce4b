#include "option-row.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <type_traits>

namespace {

constexpr std::string_view words_mark = "{words}";
constexpr std::string_view default_mark = "{default}";
constexpr std::string_view value_mark = "{value}";

template <typename Type>
bool holds(const option_row& row) {
  return std::holds_alternative<Type>(row.destination);
}

std::string with_mark_replaced(std::string text, std::string_view mark, const std::string& value) {
  const std::size_t at = text.find(mark);
  return at == std::string::npos ? text : text.replace(at, mark.size(), value);
}

// Modes with numbers in one sentence, others in a sentence each.
std::string words_text(const option_row& row) {
  std::string text;
  for (const option_word& word : row.words) {
    if (!text.empty()) text += holds<int*>(row) ? ", " : ". ";
    text.append(word.word).append(": ").append(word.meaning);
  }
  return text;
}

// The number or word in the destination; empty for all others.
std::string value_text(const option_row& row) {
  std::ostringstream text;
  const auto write = [&](const auto& destination) {
    using type = std::remove_cvref_t<decltype(destination)>;
    if constexpr (std::is_same_v<type, word_destination>) {
      text << row.words[static_cast<std::size_t>(*destination.place)].word;
    } else if constexpr (std::is_arithmetic_v<std::remove_pointer_t<type>> && !std::is_same_v<type, bool*>) {
      text << *destination;
    }
  };
  std::visit(write, row.destination);
  return text.str();
}

std::string default_text(const option_row& row) {
  return row.default_name != nullptr ? row.default_name : value_text(row);
}

bool has_least(const option_row& row) { return row.least != std::numeric_limits<long long>::min(); }
bool has_most(const option_row& row) { return row.most != std::numeric_limits<long long>::max(); }

std::string limits_text(const option_row& row) {
  std::string text;
  if (has_least(row)) {
    text += row.complaint != nullptr ? " It must be " + std::to_string(row.least) + " or more."
                                     : " Smaller values count as " + std::to_string(row.least) + ".";
  }
  if (has_most(row)) text += " It must be " + std::to_string(row.most) + " or less.";
  return text;
}

template <typename Number>
std::string complaint_about_number(const option_row& row, Number& value) {
  const long long least = row.words.empty() ? row.least : 0;
  const long long most = row.words.empty() ? row.most : static_cast<long long>(row.words.size()) - 1;
  const auto number = static_cast<long long>(value);
  if (number >= least && number <= most) return "";
  if (row.complaint != nullptr) return with_mark_replaced(row.complaint, value_mark, std::to_string(number));
  value = static_cast<Number>(std::clamp(number, least, most));
  return "";
}

}  // namespace

bool is_switch(const option_row& row) { return holds<bool*>(row); }
bool is_plain_words(const option_row& row) { return holds<std::vector<std::string>*>(row); }

std::string help_text(const option_row& row) {
  std::string rest = with_mark_replaced(row.help, words_mark, words_text(row));
  rest = with_mark_replaced(std::move(rest), default_mark, default_text(row));
  return rest.empty() ? row.summary : std::string(row.summary) + ' ' + rest;
}

std::string value_label(const option_row& row) {
  if (is_switch(row)) return "";
  if (holds<float*>(row)) return "float";
  if (holds<int*>(row) || holds<unsigned*>(row)) return "int";
  if (!holds<word_destination>(row)) return row.label;
  std::string label;
  for (const option_word& word : row.words) (label += label.empty() ? "" : "|") += word.word;
  return label;
}

std::string further_sentences(const option_row& row) {
  std::string text;
  const bool is_told = row.is_required || std::string_view(row.help).find(default_mark) != std::string_view::npos;
  if (!is_told && !default_text(row).empty()) text += " Default: " + default_text(row) + ".";
  text += limits_text(row);
  if (*row.note != '\0') text.append(" ").append(row.note);
  return text.empty() ? text : text.substr(1);
}

std::string complaint_about(const option_row& row) {
  if (int* const* number = std::get_if<int*>(&row.destination)) return complaint_about_number(row, **number);
  if (unsigned* const* number = std::get_if<unsigned*>(&row.destination)) return complaint_about_number(row, **number);
  if (!is_plain_words(row)) return "";
  std::size_t count = std::get<std::vector<std::string>*>(row.destination)->size();
  return complaint_about_number(row, count);
}
