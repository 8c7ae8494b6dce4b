#include "faststring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string contents(const faststring& s) { return {s.buffer, s.length}; }

void push_times(faststring& s, unsigned times) {
  for (unsigned i = 0; i < times; ++i) s.push_back('x');
}

TEST(Faststring, StartsWithoutABuffer) {
  const faststring s;
  EXPECT_EQ(s.buffer, nullptr);
  EXPECT_EQ(s.length, 0U);
  EXPECT_EQ(s.capacity, 0U);
}

TEST(Faststring, PushBackAllocatesFourBytesAndDoublesAtTheFifthNinthAndSeventeenth) {
  faststring s;
  unsigned pushed = 0;
  const auto capacity_after = [&](unsigned bytes) {
    push_times(s, bytes - pushed);
    pushed = bytes;
    return s.capacity;
  };
  EXPECT_EQ(capacity_after(1), 4U);
  EXPECT_EQ(capacity_after(4), 4U);
  EXPECT_EQ(capacity_after(5), 8U);
  EXPECT_EQ(capacity_after(8), 8U);
  EXPECT_EQ(capacity_after(9), 16U);
  EXPECT_EQ(capacity_after(16), 16U);
  EXPECT_EQ(capacity_after(17), 32U);
}

TEST(Faststring, PushBackKeepsWhatIsThere) {
  faststring s;
  std::string expected;
  for (int i = 0; i < 1000; ++i) {
    const char c = static_cast<char>('A' + i % 26);
    s.push_back(c);
    expected += c;
  }
  EXPECT_EQ(contents(s), expected);
}

TEST(Faststring, PushBackDoublesACapacityThatIsNoPowerOfTwo) {
  faststring s;
  s.reserve(6);
  push_times(s, 8);
  EXPECT_EQ(s.capacity, 14U);
}

TEST(Faststring, ReserveMakesRoomForExactlyTheBytesAndATerminator) {
  faststring s;
  s.reserve(10);
  EXPECT_EQ(s.capacity, 11U);
  EXPECT_EQ(s.length, 0U);
}

TEST(Faststring, ReserveNeverShrinks) {
  faststring s;
  s.reserve(10);
  s.reserve(3);
  EXPECT_EQ(s.capacity, 11U);
  s.reserve(10);
  EXPECT_EQ(s.capacity, 11U);
  s.reserve(11);
  EXPECT_EQ(s.capacity, 12U);
}

TEST(Faststring, ReserveBeyondThirtyTwoBitsIsOutOfMemory) {
  faststring s;
  EXPECT_THROW(s.reserve(4294967295U), std::bad_alloc);
}

TEST(Faststring, ReserveBehindDoublesUntilTheBytesFit) {
  faststring s;
  push_times(s, 3);
  s.reserve_after(1);
  EXPECT_EQ(s.capacity, 4U);
  s.reserve_after(10);
  EXPECT_EQ(s.capacity, 16U);
  EXPECT_EQ(contents(s), "xxx");
}

TEST(Faststring, AssignOfARangeAllocatesExactlyItsLengthAndOne) {
  const std::string text = "ACGTAC";
  faststring s;
  s.assign(text.data() + 1, text.data() + 4);
  EXPECT_EQ(contents(s), "CGT");
  EXPECT_EQ(s.capacity, 4U);
}

TEST(Faststring, AssignOfATextLeavesOutItsTerminator) {
  faststring s;
  s.assign("hello");
  EXPECT_EQ(contents(s), "hello");
  EXPECT_EQ(s.capacity, 6U);
}

TEST(Faststring, AssignOfAShorterTextKeepsTheCapacity) {
  faststring s;
  s.assign("a long text");
  s.assign("ab");
  EXPECT_EQ(contents(s), "ab");
  EXPECT_EQ(s.capacity, 12U);
}

TEST(Faststring, AssignOfTheEmptyTextClearsAndLeavesRoomForOneByte) {
  faststring s;
  s.assign("");
  EXPECT_EQ(s.length, 0U);
  EXPECT_EQ(s.capacity, 1U);
}

TEST(Faststring, CStrGrowsAFullStringByExactlyOneByte) {
  faststring s;
  s.reserve(6);
  push_times(s, 7);
  ASSERT_EQ(s.capacity, 7U);
  EXPECT_STREQ(s.c_str(), "xxxxxxx");
  EXPECT_EQ(s.capacity, 8U);
  EXPECT_EQ(s.length, 7U);
}

TEST(Faststring, CStrDoesNotGrowAStringWithRoomForTheTerminator) {
  faststring s;
  push_times(s, 7);
  ASSERT_EQ(s.capacity, 8U);
  EXPECT_STREQ(s.c_str(), "xxxxxxx");
  EXPECT_EQ(s.capacity, 8U);
  EXPECT_EQ(s.length, 7U);
}

TEST(Faststring, CStrOfANewStringIsTheEmptyText) {
  faststring s;
  EXPECT_STREQ(s.c_str(), "");
  EXPECT_EQ(s.capacity, 1U);
}

TEST(Faststring, AByteBehindCStrReplacesTheTerminator) {
  faststring s;
  s.assign("AC");
  (void)s.c_str();
  s.push_back('G');
  EXPECT_STREQ(s.c_str(), "ACG");
}

}  // namespace
