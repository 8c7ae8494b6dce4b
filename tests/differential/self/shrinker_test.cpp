#include "shrinker.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace differential {
namespace {

constexpr int plenty = 100000;

TEST(shrinker, leaves_only_what_the_failure_needs) {
  test_case failing;
  failing.options = {{"--maskX"}, {"-s", "40"}, {"-D"}};
  failing.fasta = ">a\nACGT\n>b\nACGTTTGTCA\n>c\nGGGG\n";
  const auto has_GTC = [](const test_case& tested) { return tested.fasta.find("GTC") != std::string::npos; };
  const test_case small = CShrinker(has_GTC, plenty, plenty).shrink(failing);
  EXPECT_EQ(small.fasta, "GTC");
  EXPECT_TRUE(small.options.empty());
}

TEST(shrinker, keeps_needed_options_and_brings_their_numbers_nearer_to_zero) {
  test_case failing;
  failing.options = {{"-s", "40"}, {"-m", "-9"}, {"-D"}};
  const auto needs_both = [](const test_case& tested) {
    const auto& options = tested.options;
    if (options.size() < 2 || options[0][0] != "-s" || options[1][0] != "-m") return false;
    return std::stoi(options[0][1]) >= 7 && std::stoi(options[1][1]) <= -2;
  };
  const test_case small = CShrinker(needs_both, plenty, plenty).shrink(failing);
  EXPECT_EQ(small.options, (std::vector<option_words>{{"-s", "7"}, {"-m", "-2"}}));
}

TEST(shrinker, blanks_what_must_stay_in_its_place_and_joins_the_lines) {
  test_case failing;
  failing.fasta = ">x\n" + std::string(2000, 'A') + "\n" + std::string(2997, 'C') + "GTC\n";
  const auto has_GTC_there = [](const test_case& tested) {
    std::string text = tested.fasta;
    std::erase(text, '\n');
    return text.find("GTC") == 4999;
  };
  const test_case small = CShrinker(has_GTC_there, plenty, plenty).shrink(failing);
  EXPECT_EQ(small.fasta, ">x\n" + std::string(4997, 'N') + "GTC");
}

TEST(shrinker, stops_when_its_runs_are_used_up) {
  test_case failing;
  failing.fasta = std::string(1000, 'A');
  int runs = 0;
  const auto never = [&runs](const test_case&) {
    ++runs;
    return false;
  };
  EXPECT_EQ(CShrinker(never, 50, plenty).shrink(failing).fasta, failing.fasta);
  EXPECT_EQ(runs, 50);
}

TEST(cut_into_records, cuts_in_front_of_every_header) {
  EXPECT_EQ(cut_into_records("#c\n>a\nAC\n>b\n>"), (std::vector<std::string>{"#c\n", ">a\nAC\n", ">b\n", ">"}));
  EXPECT_EQ(cut_into_records(">a>b\nAC"), (std::vector<std::string>{">a>b\nAC"}));
  EXPECT_TRUE(cut_into_records("").empty());
}

}  // namespace
}  // namespace differential
