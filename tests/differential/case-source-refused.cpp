#include <array>

#include "case-sources.h"
#include "search-settings.h"

namespace differential {

namespace {

struct number_option {
  const char* name;
  const char* short_name;
};

constexpr std::array number_options{number_option{"--succN", "-N"},
                                    number_option{"--reportUnit", "--reportUnit"},
                                    number_option{"--NPerfectionMode", "--NPerfectionMode"},
                                    number_option{"--printRepeatSeqMode", "--printRepeatSeqMode"},
                                    number_option{"--outputFormat", "--outputFormat"},
                                    number_option{"--flanking", "-f"},
                                    number_option{"--minPerfection", "--minPerfection"},
                                    number_option{"--maxPerfection", "--maxPerfection"},
                                    number_option{"--firstSeq", "--firstSeq"},
                                    number_option{"--lastSeq", "--lastSeq"},
                                    number_option{"--maximum_score_reduction", "-R"},
                                    number_option{"--recursion", "-r"},
                                    number_option{"--minUnitLen", "-u"},
                                    number_option{"--maxUnitLen", "-U"},
                                    number_option{"--minLength_b", "--minLength_b"},
                                    number_option{"--minLength_a", "--minLength_a"},
                                    number_option{"--minLength", "-l"},
                                    number_option{"--minScore_b", "--minScore_b"},
                                    number_option{"--minScore_a", "--minScore_a"},
                                    number_option{"--minScore", "-s"},
                                    number_option{"--mismatchScore", "-m"},
                                    number_option{"--indelScore", "-g"},
                                    number_option{"--searchMode", "-M"}};

option_words odd_option(CRandom& random) {
  const number_option& option = number_options[random.below(number_options.size())];
  const char* const name = random.percent(50) ? option.name : option.short_name;
  if (random.percent(60)) return {name, std::to_string(random.between(-3, 6))};
  return {name, random.one_of<const char*>({"",      "x",     "1x",         "1.5",        "-",           "--",
                                            " 1",    "+2",    "1e1",        "0x3",        "nan",         "inf",
                                            "10000", "10001", "2147483647", "2147483648", "-2147483648", "99999999999",
                                            "1e39",  "exact", "Exact",      "extendExact"})};
}

option_words odd_word(CRandom& random) {
  return {
      random.one_of<const char*>({"--help", "-h", "--version", "--foo", "-x", "-", "--", "--ignore_rest", "--minscore",
                                  "-mM", "-D3", "--minScore=3", "-s", "--maskX", "--maskX", "-D", "", "word"})};
}

std::vector<std::string> odd_names(CRandom& random) {
  const std::string input = random.one_of<const char*>(
      {"in.fa", "in.fa", "missing.fa", "missing%s.fa", "100%.fa", "%d%%", "", ".", "./in.fa"});
  const std::string output = random.one_of<const char*>(
      {"results", "no-directory/results", "no-directory/%n%s%5d", ".", "in.fa", "in.fa.masked", "./in.fa", "re sults"});
  const int kind = random.between(1, 10);
  if (kind == 1) return {};
  if (kind <= 5) return {input};
  if (kind <= 9) return {input, output};
  return {input, output, "third"};
}

test_case refused_case(std::uint64_t seed, std::uint64_t index) {
  CRandom random(seed_of_case(seed, index));
  test_case made;
  made.label = label_of("refused", seed, index);
  made.options = cheap_settings(random).options;
  const std::size_t odd_options = random.below(3);
  for (std::size_t i = 0; i < odd_options; ++i) made.options.push_back(odd_option(random));
  if (random.percent(25)) made.options.insert(made.options.begin(), odd_word(random));
  if (random.percent(15)) made.options.push_back(odd_word(random));
  if (random.percent(50)) made.file_names = odd_names(random);
  made.fasta = ">s1\nACACACACACNNNNGGGGGGGG\n";
  return made;
}

}  // namespace

case_source refused_cases(std::uint64_t seed) {
  return [seed](std::uint64_t index) { return refused_case(seed, index); };
}

}  // namespace differential
