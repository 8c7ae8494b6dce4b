#include "CDnaString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "support/random-dna.h"

namespace {

std::string contents(const faststring& s) { return {s.buffer, s.length}; }

struct normal_form {
  std::string unit;
  bool periodic;
};

normal_form smallest_rotation(const std::string& unit) {
  CDnaString source;
  CDnaString result;
  source.assign(unit.data(), unit.data() + unit.size());
  const bool periodic = result.setToMinAlphaRepModCyclicPermOf(source);
  EXPECT_EQ(contents(source), unit);
  return {contents(result), periodic};
}

std::string reverse_complement(const std::string& unit) {
  CDnaString source;
  CDnaString result;
  source.assign(unit.data(), unit.data() + unit.size());
  result.set_to_reverse_complement_of(source);
  return contents(result);
}

TEST(CDnaString, TheSmallestRotationOfTacIsAct) {
  EXPECT_EQ(smallest_rotation("TAC").unit, "ACT");
  EXPECT_FALSE(smallest_rotation("TAC").periodic);
}

TEST(CDnaString, TheSmallestRotationOfCaIsAc) { EXPECT_EQ(smallest_rotation("CA").unit, "AC"); }

TEST(CDnaString, ASingleSymbolIsItsOwnRotationAndNotPeriodic) {
  EXPECT_EQ(smallest_rotation("G").unit, "G");
  EXPECT_FALSE(smallest_rotation("G").periodic);
}

TEST(CDnaString, AUnitMadeOfAShorterOneIsPeriodic) {
  EXPECT_TRUE(smallest_rotation("ATAT").periodic);
  EXPECT_TRUE(smallest_rotation("AACAAC").periodic);
  EXPECT_TRUE(smallest_rotation("CAACAA").periodic);
  EXPECT_TRUE(smallest_rotation("TT").periodic);
}

TEST(CDnaString, AUnitWithEqualPartsThatDoNotRepeatIsNotPeriodic) {
  EXPECT_FALSE(smallest_rotation("AACAAG").periodic);
  EXPECT_FALSE(smallest_rotation("ATATA").periodic);
}

TEST(CDnaString, SymbolsAreComparedAsUnsignedBytes) {
  EXPECT_EQ(smallest_rotation("\xff"
                              "A")
                .unit,
            "A\xff");
}

TEST(CDnaString, TheResultReplacesALongerText) {
  CDnaString source;
  CDnaString result;
  source.assign("GA");
  result.assign("ACGTACGT");
  result.setToMinAlphaRepModCyclicPermOf(source);
  EXPECT_EQ(contents(result), "AG");
}

std::string smallest_by_trying_all(const std::string& unit) {
  std::string smallest = unit;
  std::string rotated = unit;
  for (std::size_t i = 0; i < unit.size(); ++i) {
    std::rotate(rotated.begin(), rotated.begin() + 1, rotated.end());
    smallest = std::min(smallest, rotated);
  }
  return smallest;
}

bool is_periodic_by_trying_all(const std::string& unit) {
  for (std::size_t i = 1; i < unit.size(); ++i) {
    if (unit.substr(i) + unit.substr(0, i) == unit) return true;
  }
  return false;
}

void expect_the_normal_form_of_trying_all(const std::string& unit) {
  const normal_form found = smallest_rotation(unit);
  ASSERT_EQ(found.unit, smallest_by_trying_all(unit)) << unit;
  ASSERT_EQ(found.periodic, is_periodic_by_trying_all(unit)) << unit;
}

TEST(CDnaString, TheSmallestRotationOfEveryUnitOfUpToSixSymbols) {
  const std::string alphabet = "ACGT";
  for (unsigned length = 1; length <= 6; ++length) {
    for (unsigned code = 0; code < 1U << (2 * length); ++code) {
      std::string unit;
      for (unsigned i = 0; i < length; ++i) unit += alphabet[(code >> (2 * i)) & 3U];
      expect_the_normal_form_of_trying_all(unit);
    }
  }
}

TEST(CDnaString, TheSmallestRotationOfRandomLongUnits) {
  CRandomDna random(2);
  for (int round = 0; round < 500; ++round) {
    const std::string block = random.sequence(random.coin() ? "AC" : "ACGTN", random.number(1, 20));
    std::string unit;
    for (int copies = random.number(1, 4); copies > 0; --copies) unit += block;
    if (random.coin()) unit += 'A';
    expect_the_normal_form_of_trying_all(unit);
  }
}

TEST(CDnaString, TheReverseComplementIsReadFromTheEnd) {
  EXPECT_EQ(reverse_complement("TAC"), "GTA");
  EXPECT_EQ(reverse_complement("AACGT"), "ACGTT");
  EXPECT_EQ(reverse_complement("CA"), "TG");
}

TEST(CDnaString, EveryLetterOfTheTableHasItsComplement) {
  EXPECT_EQ(reverse_complement("ATCGBVDHKMRYN"), "NRYKMDHBVCGAT");
}

TEST(CDnaString, SAndWAndUAndLowerCaseHaveNoComplement) {
  EXPECT_EQ(reverse_complement("ASA"), "T?T");
  EXPECT_EQ(reverse_complement("WUacgt-"), "???????");
}

TEST(CDnaString, NothingButTheThirteenLettersHasAComplement) {
  int letters = 0;
  for (int byte = 0; byte < 256; ++byte) letters += CDnaString::complement(static_cast<char>(byte)) != '?' ? 1 : 0;
  EXPECT_EQ(letters, 13);
}

}  // namespace
