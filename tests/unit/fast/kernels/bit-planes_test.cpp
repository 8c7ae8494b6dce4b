#include "bit-planes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <string>
#include <vector>

#include "support/each-target.h"
#include "support/random-dna.h"

namespace {

bool bit_of(const std::uint64_t* plane, std::size_t lane) { return (plane[lane / 64] >> (lane % 64) & 1) != 0; }

// Whether the planes at index t and `lane` tell the symbol; outside the sequence, whether they tell that it is no N.
bool is_told(const CBitPlanes& planes, std::ptrdiff_t t, std::size_t lane, const std::string& symbols) {
  const std::ptrdiff_t position = static_cast<std::ptrdiff_t>(lane * planes.stretch()) + t;
  const bool is_inside = position >= 0 && position < static_cast<std::ptrdiff_t>(symbols.size());
  const char symbol = is_inside ? symbols[static_cast<std::size_t>(position)] : ' ';
  if (planes.has_Ns() && bit_of(planes.Ns(t), lane) != (symbol == 'N')) return false;
  if (!is_inside || symbol == 'N') return true;
  return bit_of(planes.low(t), lane) == (symbol == 'C' || symbol == 'G') &&
         bit_of(planes.high(t), lane) == (symbol == 'T' || symbol == 'G');
}

// Every symbol is found at every distance that may be asked for, from every position.
void check_planes(const std::string& symbols, std::size_t margin) {
  const std::vector<char> exact(symbols.begin(), symbols.end());  // so that a sanitizer notices reading beyond it
  CBitPlanes planes;
  planes.build(exact.data(), exact.size(), margin);
  ASSERT_EQ(planes.length(), symbols.size());
  ASSERT_GE(planes.margin(), margin);
  ASSERT_GE(planes.stretch() * CBitPlanes::lanes, symbols.size());
  ASSERT_EQ(planes.has_Ns(), symbols.find('N') != std::string::npos);
  const auto reach = static_cast<std::ptrdiff_t>(margin);
  const auto stretch = static_cast<std::ptrdiff_t>(planes.stretch());
  for (std::ptrdiff_t t = -reach; t < stretch + reach; ++t) {
    for (std::size_t lane = 0; lane < 64 * planes.words_in_use(); ++lane) {
      ASSERT_TRUE(is_told(planes, t, lane, symbols)) << symbols.size() << " symbols, index " << t << ", lane " << lane;
    }
  }
}

TEST(BitPlanes, HoldEverySymbolOfRecordsOfManyLengths) {
  on_each_target([] {
    CRandomDna random(1);
    for (int length = 0; length <= 1200; length += random.number(1, 40)) {
      check_planes(random.sequence(random.coin() ? "ACGT" : "ACGTN", length),
                   static_cast<std::size_t>(random.number(0, 130)));
    }
    for (const int length : {511, 512, 513, 1024, 1025, 4095, 32768, 32769}) {
      check_planes(random.sequence("ACGTN", length), 60);
    }
  });
}

TEST(BitPlanes, UseAsManyLanesAsThereAreSymbolsUntilAllAreInUse) {
  for (const std::size_t length : {0U, 1U, 63U, 64U, 65U, 500U, 511U, 512U, 513U, 1025U}) {
    CBitPlanes planes;
    const std::string symbols(length, 'C');
    planes.build(symbols.data(), length, 10);
    std::size_t lanes = 0;
    for (std::size_t w = 0; w < planes.words_in_use(); ++w) {
      lanes += static_cast<std::size_t>(std::popcount(planes.lanes_in_use(w)));
    }
    EXPECT_EQ(lanes, std::min(length, CBitPlanes::lanes));
  }
}

}  // namespace
