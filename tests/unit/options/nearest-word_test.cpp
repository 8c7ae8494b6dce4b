#include "nearest-word.h"

#include <gtest/gtest.h>

namespace {

const std::vector<std::string> words{"minScore", "maxUnitLen", "output", "index"};

TEST(NearestWord, IsTheOneWithTheFewestEdits) {
  EXPECT_EQ(nearest_word("minScor", words), "minScore");
  EXPECT_EQ(nearest_word("outptu", words), "output");
  EXPECT_EQ(nearest_word("idx", words), "index");
}

TEST(NearestWord, MayDifferInTheCaseOfLetters) { EXPECT_EQ(nearest_word("MAXUNITLEN", words), "maxUnitLen"); }

TEST(NearestWord, IsNoneWhereAllDifferTooMuch) {
  EXPECT_EQ(nearest_word("gamma", words), "");
  EXPECT_EQ(nearest_word("", words), "");
  EXPECT_EQ(nearest_word("ab", {"n", "x"}), "");
}

}  // namespace
