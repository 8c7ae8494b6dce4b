// Signals and the stretches of a run in which they are only noted.

#include "quarvo-interruption.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr const char* stop_text = "^\nAnalysis has been stopped by the user.\n\n$";

class Interruption : public ::testing::TestWithParam<int> {
 protected:
  int signal = GetParam();
  ::testing::ExitedWithCode a_stop{128 + signal};
};

TEST_P(Interruption, StopsTheProcessAtOnce) {
  const auto run = [this] {
    stop_on_signals();
    std::raise(signal);
    std::exit(0);
  };
  EXPECT_EXIT(run(), a_stop, stop_text);
}

TEST_P(Interruption, FlushesNothing) {
  const auto run = [this] {
    stop_on_signals();
    static char buffer[1000];
    std::setvbuf(stderr, buffer, _IOFBF, sizeof buffer);
    std::fputs("part of a line", stderr);
    std::raise(signal);
  };
  EXPECT_EXIT(run(), a_stop, stop_text);
}

TEST_P(Interruption, WaitsForWhatIsBeingWritten) {
  const auto run = [this] {
    stop_on_signals();
    {
      const CUninterrupted writing;
      std::raise(signal);
      std::fputs("written", stderr);
    }
    std::exit(0);
  };
  EXPECT_EXIT(run(), a_stop, "^written\nAnalysis has been stopped by the user.\n\n$");
}

TEST_P(Interruption, StopsTheProcessAtOnceAgainBehindWhatWasWritten) {
  const auto run = [this] {
    stop_on_signals();
    { const CUninterrupted writing; }
    std::raise(signal);
    std::exit(0);
  };
  EXPECT_EXIT(run(), a_stop, stop_text);
}

TEST_P(Interruption, LeavesAHeldProcessToItsEnd) {
  const auto run = [this] {
    stop_on_signals();
    hold_signals();
    std::raise(signal);
    std::exit(0);
  };
  EXPECT_EXIT(run(), ::testing::ExitedWithCode(0), "^$");
}

using InterruptionInTheBackground = Interruption;

TEST_P(InterruptionInTheBackground, TakesSignalsOverThatWereIgnored) {
  const auto run = [this] {
    (void)std::signal(signal, SIG_IGN);
    stop_on_signals();
    std::raise(signal);
    std::exit(0);
  };
  EXPECT_EXIT(run(), a_stop, stop_text);
}

INSTANTIATE_TEST_SUITE_P(ForEachSignal, Interruption, ::testing::Values(SIGINT, SIGTERM, SIGHUP));
INSTANTIATE_TEST_SUITE_P(ForEachSignal, InterruptionInTheBackground, ::testing::Values(SIGINT, SIGTERM));

TEST(InterruptionUnderNohup, LeavesAnIgnoredHangupIgnored) {
  const auto run = [] {
    (void)std::signal(SIGHUP, SIG_IGN);
    stop_on_signals();
    std::raise(SIGHUP);
    std::exit(0);
  };
  EXPECT_EXIT(run(), ::testing::ExitedWithCode(0), "^$");
}

}  // namespace
