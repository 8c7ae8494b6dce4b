#include "option-bytes.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <string_view>

#include "global-types-and-parameters-options.h"

namespace {

// Options whose values of interest lie close together; all others take values from -64 on.
struct usual_range {
  const char* name;
  int low;
  int high;
};

constexpr usual_range any_number{"", -64, 127};
constexpr std::array usual_ranges{usual_range{"succN", 0, 5},
                                  usual_range{"reportUnit", 0, 2},
                                  usual_range{"NPerfectionMode", 0, 2},
                                  usual_range{"printRepeatSeqMode", 0, 2},
                                  usual_range{"outputFormat", 0, 4},
                                  usual_range{"flanking", 0, 40},
                                  usual_range{"minPerfection", -1, 101},
                                  usual_range{"maxPerfection", 30, 101},
                                  usual_range{"firstSeq", 0, 4},
                                  usual_range{"lastSeq", -1, 5},
                                  usual_range{"maximum_score_reduction", -8, 60},
                                  usual_range{"recursion", 1, 9},
                                  usual_range{"minUnitLen", 0, 12},
                                  usual_range{"maxUnitLen", 2, 40},
                                  usual_range{"minLength_b", -8, 16},
                                  usual_range{"minLength_a", -10, 30},
                                  usual_range{"minLength", 0, 60},
                                  usual_range{"minScore_b", -8, 16},
                                  usual_range{"minScore_a", -10, 20},
                                  usual_range{"minScore", 0, 30},
                                  usual_range{"mismatchScore", -12, -2},
                                  usual_range{"indelScore", -12, -2}};

// For the highest byte values.
constexpr std::array extreme_numbers{-2147483647 - 1,
                                     -2147483647,
                                     -2000000000,
                                     -1000000,
                                     -65536,
                                     -1000,
                                     -101,
                                     -2,
                                     -1,
                                     0,
                                     1,
                                     2,
                                     31,
                                     32,
                                     33,
                                     50,
                                     51,
                                     63,
                                     64,
                                     65,
                                     127,
                                     128,
                                     129,
                                     254,
                                     255,
                                     256,
                                     257,
                                     1000,
                                     10000,
                                     10001,
                                     2147483646,
                                     2147483647};
constexpr std::array extreme_fractions{"-3.4028234e38", "3.4028234e38", "-1e-30", "1e-30", "0.1",
                                       "66.666664",     "66.66667",     "1e9",    "-1e9",  "16777217"};
constexpr int first_extreme = 256 - static_cast<int>(extreme_numbers.size());

const usual_range& range_of(const option_row& option) {
  const auto found = std::find_if(usual_ranges.begin(), usual_ranges.end(), [&](const usual_range& range) {
    return option.long_name == std::string_view(range.name);
  });
  return found == usual_ranges.end() ? any_number : *found;
}

int usual_number(const option_row& option, int byte) {
  const usual_range& range = range_of(option);
  return range.low + byte % (range.high - range.low + 1);
}

int number(const option_row& option, int byte) {
  return byte < first_extreme ? usual_number(option, byte)
                              : extreme_numbers[static_cast<std::size_t>(byte - first_extreme)];
}

// The value of an option as a word; one for each kind of destination that takes a value.
struct value_maker {
  const option_row& option;
  int byte;

  std::string operator()(const int*) const { return std::to_string(number(option, byte)); }
  std::string operator()(const unsigned*) const { return std::to_string(static_cast<unsigned>(number(option, byte))); }
  std::string operator()(word_destination) const {
    return option.words[static_cast<std::size_t>(byte) % option.words.size()].word;
  }

  // In quarters for the slopes, in percent for the perfection.
  std::string operator()(const float*) const {
    if (byte >= first_extreme) {
      return extreme_fractions[static_cast<std::size_t>(byte - first_extreme) % extreme_fractions.size()];
    }
    const bool is_slope = std::string_view(option.long_name).ends_with("_b");
    std::array<char, 50> text{};
    std::snprintf(text.data(), text.size(), "%g", usual_number(option, byte) * (is_slope ? 0.25 : 1.0));
    return text.data();
  }

  std::string operator()(const bool*) const { return {}; }
  std::string operator()(const std::string*) const { return {}; }
  std::string operator()(const std::vector<std::string>*) const { return {}; }
};

int as_length(const std::string& value) {
  constexpr unsigned long longest = 20000;
  return static_cast<int>(std::min(std::stoul(value), longest));
}

void note(const std::string& name, const std::string& value, differential::search_settings& settings) {
  if (name == "searchMode") settings.mode = value;
  if (name == "recursion") settings.recursion = std::stoi(value);
  if (name == "maximum_score_reduction") settings.score_reduction = std::stoi(value);
  if (name == "mismatchScore") settings.mismatch = std::min(-2, std::stoi(value));
  if (name == "indelScore") settings.indel = std::min(-2, std::stoi(value));
  if (name == "minUnitLen") settings.min_unit = as_length(value);
  if (name == "maxUnitLen") settings.max_unit = as_length(value);
}

}  // namespace

fuzz_case take_options(const std::uint8_t* data, std::size_t size) {
  fuzz_case made;
  const auto table = option_table();
  std::set<std::size_t> given;
  std::size_t at = 0;
  for (; at < size && data[at] < table.size(); ++at) {
    const std::size_t index = data[at];
    const option_row& option = table[index];
    if (std::holds_alternative<std::vector<std::string>*>(option.destination)) continue;
    const bool is_switch = std::holds_alternative<bool*>(option.destination);
    if (!is_switch && ++at == size) break;
    if (!given.insert(index).second) continue;
    made.words.push_back(std::string("--") + option.long_name);
    if (is_switch) continue;
    made.words.push_back(std::visit(value_maker{option, data[at]}, option.destination));
    note(option.long_name, made.words.back(), made.settings);
  }
  made.rest.assign(data + at, data + size);
  return made;
}
