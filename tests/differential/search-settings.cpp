#include "search-settings.h"

#include <algorithm>
#include <utility>

#include "reference-cost.h"

namespace differential {

namespace {

class CSettingsMaker {
 public:
  explicit CSettingsMaker(CRandom& source) : random(source) {}

  search_settings make() {
    choose_mode();
    const bool long_units = random.percent(12);
    if (long_units) {
      choose_long_units();
    } else {
      choose_unit_lengths();
    }
    choose_scores();
    choose_recursion(long_units);
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
    if (kind <= 60) return random.between(1, 10);
    if (kind <= 85) return random.between(1, 25);
    return random.between(10, 60);
  }

  void choose_unit_lengths() {
    if (random.percent(65)) give(random.one_of({"-U", "--maxUnitLen"}), settings.max_unit = longest_unit());
    if (random.percent(40)) {
      settings.min_unit = random.percent(5) ? 0 : random.between(1, settings.max_unit);
      give(random.one_of({"-u", "--minUnitLen"}), settings.min_unit);
    }
  }

  // A narrow range, the edges of vector words and of the report among them.
  void choose_long_units() {
    const int kind = random.between(1, 100);
    settings.max_unit = random.between(30, 130);
    if (kind <= 25) settings.max_unit = random.one_of({31, 32, 33, 49, 50, 51, 51, 51, 63, 64, 65, 128, 129});
    if (kind > 75) settings.max_unit = random.between(130, 400);
    if (kind > 95) settings.max_unit = random.one_of({255, 256, 257, 511, 512, 513, 1000});
    if (kind > 98) settings.max_unit = random.one_of({9999, 10000, 10001, 20000});
    settings.min_unit = std::max(1, settings.max_unit - random.mostly_small(30));
    if (settings.max_unit >= 9999) settings.min_unit = random.between(1, 20);
    give(random.one_of({"-U", "--maxUnitLen"}), settings.max_unit);
    give(random.one_of({"-u", "--minUnitLen"}), settings.min_unit);
  }

  // Lowered until the reference can search a sequence worth the name.
  void choose_recursion(bool long_units) {
    if (random.percent(75)) {
      settings.recursion =
          random.percent(12) ? random.one_of({8, 9, 12, 20, 50, 100, 254, 255, 256, 257, 300}) : random.between(1, 7);
    }
    const std::size_t needed = long_units ? sufficient_symbols(settings) : 60;
    while (settings.recursion > 1 && affordable_symbols(settings, texture::dense, ordinary_cost) < needed)
      --settings.recursion;
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

}  // namespace differential
