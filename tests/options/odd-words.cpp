#include "odd-words.h"

#include <array>

using differential::option_words;

namespace {

constexpr std::array values{
    // No numbers, or not only.
    "", " ", "x", "-", "--", "+", "nan", "NaN", "inf", "-inf", "infinite", "3x", "3 ", " 3", "\t3", "3\n", "3 4", "1,5",
    "0x3", "+3", "--3", "- 3", "1.", ".5", "1.5", "-1.5", "1e1", "1e-30", "1e-46", "1e39", "-1e39", "3.4028234e38",
    "-3.4028234e38", "3.4028236e38", "\xFF", "%s%n", "$(false)",
    // Small ones, and around every limit that the program has.
    "0", "-0", "00", "1", "2", "3", "4", "5", "-1", "-2", "-3", "63", "64", "65", "99.999", "100", "100.001", "101",
    "254", "255", "256", "257", "9999", "10000", "10001", "32767", "32768", "65535", "65536", "-65536", "16777217",
    // Around the limits of the types.
    "2147483645", "2147483646", "2147483647", "2147483648", "-2147483646", "-2147483647", "-2147483648", "-2147483649",
    "4294967294", "4294967295", "4294967296", "4294967297", "-4294967295", "-4294967296", "9223372036854775807",
    "-9223372036854775808", "18446744073709551615", "18446744073709551616", "99999999999999999999999999999999999999999",
    "-99999999999999999999999999999999999999999",
    // Words.
    "exact", "extendExact", "imperfect", "Exact", " exact", "exact ", "exac", "exact|extendExact|imperfect"};

std::string long_form(const option_row& option) { return std::string("--") + option.long_name; }
std::string short_form(const option_row& option) { return std::string("-") + option.short_name; }

}  // namespace

std::span<const char* const> odd_values() { return values; }

std::vector<option_words> spellings(const option_row& option, const char* value) {
  if (is_plain_words(option)) return {{value}};
  const bool has_short_form = *option.short_name != '\0';
  std::vector<option_words> forms;
  if (is_switch(option)) {
    forms = {{long_form(option)}};
    if (has_short_form) forms.push_back({short_form(option)});
    return forms;
  }
  forms = {{long_form(option), value}};
  if (has_short_form) forms.push_back({short_form(option), value});
  return forms;
}

option_words random_words(const option_row& option, differential::CRandom& random) {
  const std::string number = std::to_string(random.between(-6, 12));
  const bool is_small = random.percent(50);
  const auto forms = spellings(option, is_small ? number.c_str() : values[random.below(values.size())]);
  return forms[random.below(forms.size())];
}
