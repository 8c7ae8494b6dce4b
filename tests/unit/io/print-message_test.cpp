// The printers of messages.

#include "print-message.h"

#include <gtest/gtest.h>

#include <string>

#include "support/stream-text.h"

namespace {

class PrintedMessages : public ::testing::Test {
 protected:
  static std::string printed(const char* text) {
    return text_of([text](std::FILE* out) { PrintMessage(out, text); });
  }
};

TEST_F(PrintedMessages, StandOneBehindTheOther) {
  EXPECT_EQ(text_of([](std::FILE* out) { PrintMessage(out, "a", "", "b\n", "c", "d"); }), "ab\ncd");
}

TEST_F(PrintedMessages, ShowTwoPercentSignsAsOne) {
  EXPECT_EQ(printed("50 %% - 100 %%\n"), "50 % - 100 %\n");
  EXPECT_EQ(printed("%%d"), "%d");
  EXPECT_EQ(printed("%%%%"), "%%");
}

TEST_F(PrintedMessages, PrintNothingForACompleteConversion) {
  EXPECT_EQ(printed("a%sb"), "ab");
  EXPECT_EQ(printed("%d%n%p"), "");
  EXPECT_EQ(printed("x%-08.3lfy"), "xy");
  EXPECT_EQ(printed("x%*.*sy"), "xy");
  EXPECT_EQ(printed("%hhd%lld%zu%jd%td%Lg!"), "!");
}

TEST_F(PrintedMessages, LeaveAnIncompleteConversionAsItIs) {
  EXPECT_EQ(printed("100%"), "100%");
  EXPECT_EQ(printed("50% of"), "50f");
  EXPECT_EQ(printed("5%y"), "5%y");
  EXPECT_EQ(printed("%5"), "%5");
  EXPECT_EQ(printed("%l."), "%l.");
}

}  // namespace
