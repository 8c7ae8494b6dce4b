#include "search-settings.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace differential {

namespace {

class CSettingsMaker {
 public:
  explicit CSettingsMaker(CRandom& source) : random(source) {}

  search_settings make() {
    choose_mode();
    choose_scores();
    choose_unit_lengths();
    choose_recursion();
    choose_N_rules();
    choose_thresholds();
    choose_perfection();
    choose_report();
    choose_records();
    shuffle(settings.options);
    return std::move(settings);
  }

 private:
  CRandom& random;
  search_settings settings;

  void give(const char* name, const std::string& value) { settings.options.push_back({name, value}); }
  void give(const char* name, int value) { give(name, std::to_string(value)); }
  void give_switch(const char* name, int chance) {
    if (random.percent(chance)) settings.options.push_back({name});
  }
  void give_sometimes(const char* name, int chance, int value) {
    if (random.percent(chance)) give(name, value);
  }

  void shuffle(std::vector<option_words>& options) {
    for (std::size_t i = options.size(); i > 1; --i) std::swap(options[i - 1], options[random.below(i)]);
  }

  void choose_mode() {
    settings.mode = random.one_of<const char*>(
        {"imperfect", "imperfect", "imperfect", "imperfect", "extendExact", "extendExact", "exact"});
    if (settings.mode != "imperfect" || random.percent(30)) {
      give(random.one_of({"-M", "--searchMode"}), settings.mode);
    }
  }

  int penalty() {
    const int kind = random.between(1, 100);
    if (kind <= 50) return -random.between(2, 6);
    if (kind <= 97) return -random.between(2, 12);
    return random.one_of({-25, -100, -1000000});
  }

  void choose_scores() {
    if (random.percent(70)) give(random.one_of({"-m", "--mismatchScore"}), settings.mismatch = penalty());
    if (random.percent(70)) give(random.one_of({"-g", "--indelScore"}), settings.indel = penalty());
    if (random.percent(45)) {
      settings.score_reduction = score_reduction();
      give(random.one_of({"-R", "--maximum_score_reduction"}), settings.score_reduction);
    }
    give_switch("--preferShorterRepeats", 35);
  }

  int score_reduction() {
    const int kind = random.between(1, 100);
    if (kind <= 40) return random.between(0, 12);
    if (kind <= 75) return random.between(0, 60);
    if (kind <= 85) return -random.between(1, 12);
    return random.one_of({-1000, -2000000000, 1000, 2000000000, 2147483646, 2147483647});
  }

  int longest_unit() {
    const int kind = random.between(1, 100);
    if (kind <= 55) return random.between(1, 10);
    if (kind <= 80) return random.between(1, 25);
    if (kind <= 96) return random.between(10, 60);
    return random.between(60, 400);
  }

  void choose_unit_lengths() {
    if (random.percent(65)) give(random.one_of({"-U", "--maxUnitLen"}), settings.max_unit = longest_unit());
    if (random.percent(40)) {
      settings.min_unit = random.percent(5) ? 0 : random.between(1, settings.max_unit);
      if (settings.max_unit > 60) settings.min_unit = settings.max_unit - random.mostly_small(20);
      give(random.one_of({"-u", "--minUnitLen"}), settings.min_unit);
    }
  }

  // Deep recursion ends in the reference only while the score allows few edits; so it is lowered until it is
  // affordable.
  void choose_recursion() {
    if (random.percent(75)) {
      settings.recursion =
          random.percent(12) ? random.one_of({8, 9, 12, 20, 50, 100, 254, 255, 256, 257, 300}) : random.between(1, 7);
    }
    while (settings.recursion > 1 && affordable_symbols(settings) < 40) --settings.recursion;
    if (settings.recursion != 5 || random.percent(20)) give(random.one_of({"-r", "--recursion"}), settings.recursion);
  }

  void choose_N_rules() {
    if (random.percent(60)) {
      settings.Ns_in_a_row = random.percent(3) ? random.one_of({-1, 20, 300}) : random.between(0, 5);
      give(random.one_of({"-N", "--succN"}), settings.Ns_in_a_row);
    }
    give_switch("--NsAsMissense", 20);
    give_sometimes("--NPerfectionMode", 40, random.between(0, 2));
  }

  std::string slope() {
    return random.one_of<const char*>(
        {"0", "0.1", "0.5", "0.75", "1", "1.3", "2", "3.7", "-1", "-0.35", "1e-3", "0.3333333"});
  }

  void choose_thresholds() {
    give_sometimes(random.one_of({"-s", "--minScore"}), 75, threshold());
    give_sometimes("--minScore_a", 25, random.between(-10, 12));
    if (random.percent(40)) give("--minScore_b", slope());
    give_sometimes(random.one_of({"-l", "--minLength"}), 20, threshold());
    give_sometimes("--minLength_a", 15, random.between(-10, 20));
    if (random.percent(15)) give("--minLength_b", slope());
  }

  int threshold() {
    const int kind = random.between(1, 100);
    if (kind <= 70) return random.between(2, 8);
    if (kind <= 90) return random.between(2, 30);
    if (kind <= 97) return random.between(30, 200);
    return random.one_of({1, 0, -3});
  }

  void choose_perfection() {
    if (random.percent(15)) give("--minPerfection", percentage());
    if (random.percent(15)) give("--maxPerfection", percentage());
  }

  std::string percentage() {
    if (random.percent(50)) return std::to_string(random.between(40, 100));
    return random.one_of<const char*>(
        {"0", "-1", "66.666667", "66.66667", "83.3333", "87.5", "90.9", "99.99", "100.5"});
  }

  void choose_report() {
    give_sometimes("--outputFormat", 75, random.between(0, 4));
    give_sometimes("--printRepeatSeqMode", 50, random.between(0, 2));
    give_sometimes("--reportUnit", 50, random.between(0, 2));
    give_sometimes(random.one_of({"-f", "--flanking"}), 50, random.one_of({0, 1, 2, 3, 5, 10, 30, 100, 5000, -1}));
    give_switch("--sequenceInfoAsComment", 30);
    give_switch(random.one_of({"-D", "--dontRemoveMostlyOverlapping"}), 40);
    give_switch("--maskX", 35);
  }

  void choose_records() {
    give_sometimes("--firstSeq", 4, random.between(-1, 5));
    give_sometimes("--lastSeq", 4, random.between(-1, 5));
  }
};

// The number of edits that a path of the look-ahead can hold before the score bound cuts it, at a guess: a path begins
// some points above zero.
double edits_of_a_path(const search_settings& settings, double unit_length) {
  const double penalty = -std::max(settings.mismatch, settings.indel);
  const double fall = std::min(unit_length + 12.0, std::max(0.0, static_cast<double>(settings.score_reduction))) + 1;
  return std::min(static_cast<double>(settings.recursion), 1 + fall / penalty);
}

// Paths of the look-ahead that a start position costs at one unit length.
double cost_of_a_position(const search_settings& settings, int unit_length) {
  if (settings.mode == "exact") return 3;
  const double edits = edits_of_a_path(settings, unit_length);
  const double points = 2 + 2 * static_cast<double>(unit_length) / -std::max(settings.mismatch, settings.indel);
  const double both_ways = 2 * points * std::pow(2.7, edits) + 3;
  return settings.mode == "imperfect" ? both_ways : 3 + both_ways / 5;
}

}  // namespace

search_settings random_settings(CRandom& random) { return CSettingsMaker(random).make(); }

search_settings cheap_settings(CRandom& random) {
  search_settings settings;
  settings.mode = random.one_of<const char*>({"exact", "extendExact", "imperfect"});
  settings.max_unit = random.between(2, 4);
  settings.options = {{"-M", settings.mode}, {"-U", std::to_string(settings.max_unit)}};
  if (random.percent(70)) settings.options.push_back({"--maskX"});
  if (random.percent(80)) settings.options.push_back({"--outputFormat", std::to_string(random.between(0, 4))});
  if (random.percent(30)) settings.options.push_back({"--sequenceInfoAsComment"});
  if (random.percent(30)) settings.options.push_back({"-f", std::to_string(random.between(0, 20))});
  if (random.percent(10)) settings.options.push_back({"--firstSeq", std::to_string(random.between(-1, 4))});
  if (random.percent(10)) settings.options.push_back({"--lastSeq", std::to_string(random.between(-1, 4))});
  return settings;
}

std::size_t affordable_symbols(const search_settings& settings) {
  constexpr double affordable_paths = 1e6;
  double cost = 0;
  for (int length = std::max(settings.min_unit, 1); length <= settings.max_unit; ++length) {
    cost += cost_of_a_position(settings, length);
  }
  return static_cast<std::size_t>(std::min(3000.0, affordable_paths / std::max(cost, 1.0)));
}

}  // namespace differential
