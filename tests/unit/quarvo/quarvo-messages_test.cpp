// What the program says about the run itself, as far as tests/cli cannot show it.

#include "quarvo-messages.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "support/default-parameters.h"
#include "support/stream-text.h"
#include "support/test-clock.h"

namespace {

template <typename Writer>
std::string standard_error_of(Writer write) {
  ::testing::internal::CaptureStderr();
  write();
  return ::testing::internal::GetCapturedStderr();
}

class ProgressLine : public ::testing::Test {
 protected:
  static std::string line(std::time_t seconds, unsigned number, const std::string& name, unsigned length) {
    time_analysis_started = test_clock::start;
    test_clock::now = test_clock::start + seconds;
    return standard_error_of([&] { report_status(number, name.c_str(), length, 'r'); });
  }

 private:
  test_clock::CReset reset;
};

TEST_F(ProgressLine, ShowsTimeRecordUnitLengthAndName) {
  EXPECT_EQ(line(3725, 12, "chr12", 2), "01.02.05 - #  12 -    2bp - chr12\n");
}

TEST_F(ProgressLine, CutsTheNameToSeventyBytes) {
  EXPECT_EQ(line(0, 1, std::string(100, 'x'), 1), "00.00.00 - #   1 -    1bp - " + std::string(70, 'x') + "\n");
}

TEST_F(ProgressLine, WidensItsColumnsForLargeNumbers) {
  EXPECT_EQ(line(59, 1000, "s", 9999), "00.00.59 - # 1000 - 9999bp - s\n");
  EXPECT_EQ(line(60, 12345, "s", 10000), "00.01.00 - # 12345 - 10000bp - s\n");
}

TEST_F(ProgressLine, HasThreeHourDigitsFromAHundredHoursOn) {
  EXPECT_EQ(line(100 * 3600 - 1, 1, "s", 1), "99.59.59 - #   1 -    1bp - s\n");
  EXPECT_EQ(line(100 * 3600, 1, "s", 1), "100.00.00 - #   1 -    1bp - s\n");
}

TEST_F(ProgressLine, CountsAClockThatRanBackAsUnsigned) {
  EXPECT_EQ(line(-1, 1, "s", 1), "13398.28.15 - #   1 -    1bp - s\n");
}

TEST_F(ProgressLine, PrintsANameWithPercentSignsAsItIs) {
  EXPECT_EQ(line(0, 1, "100%s%n", 1), "00.00.00 - #   1 -    1bp - 100%s%n\n");
}

class ProgressTiming : public ::testing::Test {
 protected:
  static bool is_due_at(std::time_t seconds) {
    test_clock::now = test_clock::start + seconds;
    return check_report_status();
  }

 private:
  test_clock::CReset reset;
};

// Asks once a second from the start of the process on.
[[noreturn]] void exit_with_success_if_due_in_seconds_1_and_61_only() {
  for (std::time_t second = 0; second <= 61; ++second) {
    test_clock::now = test_clock::start + second;
    if (check_report_status() != (second == 1 || second == 61)) std::exit(1);
  }
  std::exit(0);
}

TEST_F(ProgressTiming, TheFirstLineIsDueOneSecondAfterTheStartAndTheNextAfterAMinute) {
  ::testing::FLAGS_gtest_death_test_style = "threadsafe";  // a process that starts anew
  EXPECT_EXIT(exit_with_success_if_due_in_seconds_1_and_61_only(), ::testing::ExitedWithCode(0), "");
}

TEST_F(ProgressTiming, AnUpdateRestartsTheMinute) {
  test_clock::now = test_clock::start + 1000;
  update_report_time();
  EXPECT_FALSE(is_due_at(1000));
  EXPECT_FALSE(is_due_at(1059));
  EXPECT_TRUE(is_due_at(1060));
  EXPECT_FALSE(is_due_at(1060));
  EXPECT_FALSE(is_due_at(1119));
  EXPECT_TRUE(is_due_at(1120));
}

class ClosingLine : public ParameterTest {
 protected:
  static std::string closing_line(int format) {
    global_print_sat_mode = format;
    return text_of(
        [](std::FILE* results) { EXPECT_EQ(standard_error_of([results] { print_closing_line(results); }), ""); });
  }
};

TEST_F(ClosingLine, ClosesTheCompactFormatAsTheOthers) {
  EXPECT_EQ(closing_line(compact_format), "## Finished successfully. ##\n");
}

std::string closing_text_of_code(int code) {
  return standard_error_of([code] { good_bye_on_error(code); });
}

TEST(GoodByeOnError, SaysNothingForSuccess) { EXPECT_EQ(closing_text_of_code(0), ""); }

TEST(GoodByeOnError, TakesAPositiveCodeForAStopByTheUser) {
  EXPECT_EQ(closing_text_of_code(1), "\nAnalysis has been stopped by the user.\n\n");
  EXPECT_EQ(closing_text_of_code(99), "\nAnalysis has been stopped by the user.\n\n");
}

}  // namespace
