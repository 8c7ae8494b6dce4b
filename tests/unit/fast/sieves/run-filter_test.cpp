#include "run-filter.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/each-target.h"
#include "support/random-dna.h"

namespace {

// The sequence in a buffer of its own size, so that a sanitizer notices reading beyond it.
class CExactBuffer {
 public:
  explicit CExactBuffer(const std::string& symbols) : bytes(symbols.begin(), symbols.end()) {}
  const char* begin() const { return bytes.data(); }
  const char* end() const { return bytes.data() + bytes.size(); }

 private:
  std::vector<char> bytes;
};

struct filter_case {
  std::string symbols;
  unsigned L;
  int wanted;
  bool Ns_match;
};

// The starts that the filter's definition keeps: inside or directly after a run of matches that is long enough.
std::vector<bool> kept_by_definition(const filter_case& c) {
  const auto starts = static_cast<std::ptrdiff_t>(c.symbols.size()) - static_cast<std::ptrdiff_t>(c.L);
  const auto K = std::min<std::ptrdiff_t>(c.wanted, CRunFilter::longest_run);
  const auto matches = [&c](std::ptrdiff_t i) {
    const char a = c.symbols[static_cast<std::size_t>(i)];
    const char b = c.symbols[static_cast<std::size_t>(i) + c.L];
    return a == b || (c.Ns_match && (a == 'N' || b == 'N'));
  };
  std::vector<bool> kept(static_cast<std::size_t>(starts), K < 1);
  std::ptrdiff_t run = 0;
  for (std::ptrdiff_t i = 0; i < starts; ++i) {
    run = matches(i) ? run + 1 : 0;
    if (K < 1 || run < K) continue;
    for (std::ptrdiff_t p = i - K + 1; p <= std::min(i + 1, starts - 1); ++p) kept[static_cast<std::size_t>(p)] = true;
  }
  return kept;
}

// Asks as the search does: upwards, and now and then far ahead. Returns how many starts it was led over.
std::ptrdiff_t check_filter(const filter_case& c, CRandomDna& random, int jump_percent) {
  std::ptrdiff_t dropped = 0;
  const CExactBuffer sequence(c.symbols);
  const std::vector<bool> kept = kept_by_definition(c);
  const auto starts = static_cast<std::ptrdiff_t>(kept.size());
  const auto filter = std::make_unique<CRunFilter>(sequence.begin(), sequence.end(), c.L, c.wanted, c.Ns_match);
  for (std::ptrdiff_t p = 0; p < starts;) {
    std::ptrdiff_t expected = p;
    while (expected < starts && !kept[static_cast<std::size_t>(expected)]) ++expected;
    const std::ptrdiff_t found = filter->first_kept(sequence.begin() + p) - sequence.begin();
    EXPECT_EQ(found, expected) << c.symbols.size() << " symbols, L " << c.L << ", wanted " << c.wanted << ", from "
                               << p;
    if (::testing::Test::HasFailure()) return dropped;
    dropped += found - p;
    p = found + 1;
    if (random.number(0, 99) < jump_percent) p += random.number(0, static_cast<int>(c.symbols.size()));
  }
  return dropped;
}

// Random symbols with stretches in which a unit of length L repeats.
std::string repetitive(CRandomDna& random, int length, int L, const std::string& alphabet) {
  std::string text;
  while (static_cast<int>(text.size()) < length) {
    text += random.sequence(alphabet, random.number(0, 20));
    const std::string unit = random.sequence(alphabet, L);
    for (int i = random.number(0, 3 * L + 10); i > 0; --i) {
      text += unit[text.size() % static_cast<std::size_t>(L)];
    }
  }
  text.resize(static_cast<std::size_t>(length));
  return text;
}

TEST(RunFilter, KeepsByItsDefinitionForEveryShortLength) {
  on_each_target([] {
    CRandomDna random(1);
    std::ptrdiff_t dropped = 0;
    for (int length = 2; length <= 300; ++length) {
      const int L = random.number(1, std::min(length - 1, 12));
      const std::string symbols = repetitive(random, length, L, random.coin() ? "AC" : "ACGTN");
      dropped += check_filter({symbols, static_cast<unsigned>(L), random.number(-1, 14), random.coin()}, random, 0);
    }
    EXPECT_GT(dropped, 5000);
  });
}

TEST(RunFilter, KeepsByItsDefinitionAtBlockBorders) {
  constexpr int block = 64 * static_cast<int>(CRunFilter::block_words);
  on_each_target([] {
    CRandomDna random(2);
    std::ptrdiff_t dropped = 0;
    for (int round = 0; round < 12; ++round) {
      const int length = block + random.number(-70, 1200) + (round % 3 == 0 ? block : 0);
      const int L = random.one_of(std::vector<int>{1, 2, 3, 7, 10, 63, 64, 65, 500, 1000});
      const int wanted = random.one_of(std::vector<int>{1, 2, 6, 10, 63, 64, 65, 128, 511, 512, 513, 2000});
      const std::string symbols = repetitive(random, length, L, "ACGTN");
      dropped += check_filter({symbols, static_cast<unsigned>(L), wanted, random.coin()}, random,
                              random.one_of(std::vector<int>{0, 5}));
    }
    EXPECT_GT(dropped, 10000);
  });
}

TEST(RunFilter, SeesRunsThatCrossABlockBorderAtEveryOffset) {
  constexpr int block = 64 * static_cast<int>(CRunFilter::block_words);
  on_each_target([] {
    CRandomDna random(3);
    for (int offset = 0; offset <= 30; ++offset) {
      std::string symbols;  // of period 5, so that nothing matches at distance 3
      while (static_cast<int>(symbols.size()) < block + 2000) symbols += "AACGT";
      symbols.replace(static_cast<std::size_t>(block - offset), 15, "GGTGGTGGTGGTGGT");
      check_filter({symbols, 3, 12, false}, random, 0);
      check_filter({symbols, 3, 13, false}, random, 0);
    }
  });
}

TEST(RunFilter, KeepsEveryStartWithoutAWantedNumberOfMatches) {
  const CExactBuffer sequence("ACGTACGT");
  for (const int wanted : {0, -5}) {
    CRunFilter filter(sequence.begin(), sequence.end(), 2, wanted, false);
    for (int p = 0; p < 6; ++p) EXPECT_EQ(filter.first_kept(sequence.begin() + p), sequence.begin() + p);
  }
}

TEST(RunFilter, WantsAsManyMatchesAsTheStricterThreshold) {
  EXPECT_EQ(CRunFilter::wanted_matches(3, 6, 0), 6);
  EXPECT_EQ(CRunFilter::wanted_matches(3, 6, 9), 6);
  EXPECT_EQ(CRunFilter::wanted_matches(3, 6, 10), 7);
  EXPECT_EQ(CRunFilter::wanted_matches(3, -2, 0), -2);
  EXPECT_EQ(CRunFilter::wanted_matches(10, -2147483647 - 1, -2147483647 - 1), -2147483647 - 1);
}

TEST(RunFilter, FindsTheEndOfARunOfOneSymbol) {
  on_each_target([] {
    for (int length = 1; length <= 300; ++length) {
      for (int run = 1; run <= length; run += 1 + run / 70) {
        const CExactBuffer sequence(std::string(static_cast<std::size_t>(run), 'N') +
                                    std::string(static_cast<std::size_t>(length - run), 'A'));
        EXPECT_EQ(end_of_one_symbol_run(sequence.begin(), sequence.end()) - sequence.begin(), run) << length;
      }
    }
  });
}

TEST(RunFilter, FindsTheChangesOfSymbol) {
  on_each_target([] {
    CRandomDna random(8);
    for (int length = 0; length <= 200; ++length) {
      const std::string text = random.sequence("AACN", length);
      const CExactBuffer sequence(text);
      const std::vector<std::uint64_t> changes = changes_of_symbol(sequence.begin(), sequence.end());
      ASSERT_GE(64 * changes.size(), text.size() + 64);
      for (std::size_t p = 0; p < 64 * changes.size(); ++p) {
        const bool is_change = p + 1 < text.size() && text[p] != text[p + 1] && text[p] != 'N' && text[p + 1] != 'N';
        ASSERT_EQ((changes[p / 64] >> p % 64 & 1) != 0, is_change) << text << " " << p;
      }
    }
  });
}

}  // namespace
