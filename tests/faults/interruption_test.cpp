// Runs that the user stops: whatever the run is doing, the files end after a record that was completed.

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include "program-run.h"

namespace {

class Interruption : public FaultTest {
 protected:
  void expect_stop(int signal) {
    EXPECT_EQ(wait(), 128 + signal);
    EXPECT_TRUE(messages().ends_with(stop_text)) << messages();
    EXPECT_FALSE(has(messages(), good_byes));
  }

  void make_fifo(const std::string& name) const { ASSERT_EQ(mkfifo(path(name).c_str(), 0600), 0); }

  // Opens the fifo that a program writes, and waits until it is full: the program is then in the middle of writing.
  int open_when_full(const std::string& name) const {
    const int reader = open(path(name).c_str(), O_RDONLY | O_CLOEXEC);
    const int writer = open(path(name).c_str(), O_WRONLY | O_CLOEXEC);
    pollfd state{writer, POLLOUT, 0};
    for (int i = 0; i < 120000 && poll(&state, 1, 0) > 0; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(state.revents, 0);
    close(writer);
    return reader;
  }

  static std::string drain(int fifo) {
    std::string bytes;
    std::array<char, 65536> piece{};
    for (;;) {
      const auto count = read(fifo, piece.data(), piece.size());
      if (count <= 0) break;
      bytes.append(piece.data(), static_cast<std::size_t>(count));
    }
    close(fifo);
    return bytes;
  }

  void expect_to_be_running_for_a_while() const {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_TRUE(is_running());
  }
};

// The name of the last record in results or in masked sequences.
std::string last_record(const std::string& text) {
  const std::string lines = "\n" + text;
  const auto begin = lines.rfind("\n>");
  return begin == std::string::npos ? "" : lines.substr(begin + 2, lines.find('\n', begin + 1) - begin - 2);
}

// A record whose repeats, and whose masked symbols, take more room than a fifo has.
std::string large_record() {
  std::string record = ">large\n";
  for (int i = 0; i < 12000; ++i) record += "ACACACACACACACGTTGCA\n";
  return record;
}

class InterruptionOfASearch : public Interruption,
                              public ::testing::WithParamInterface<std::tuple<int, std::string>> {};

TEST_P(InterruptionOfASearch, LeavesTheRecordsBeforeIt) {
  const auto& [signal, mode] = GetParam();
  const std::string command =
      "exec quarvo --maskX -M " + mode + " -U " + (mode == "imperfect" ? "50" : "5000") + " in.fas results";
  directory.write("in.fas", records(20));
  const std::string good = good_results(command);
  const std::string good_masked = file("in.fas.masked");
  directory.write("in.fas", records(20) + random_record("long", 10000000));
  start(command);
  wait_for_message(" - long\n");
  send(signal);
  expect_stop(signal);
  EXPECT_EQ(file("results"), without_closing_line(good));
  EXPECT_EQ(file("in.fas.masked"), good_masked);
}

std::string case_name(const ::testing::TestParamInfo<InterruptionOfASearch::ParamType>& info) {
  const auto& [signal, mode] = info.param;
  return (signal == SIGINT ? "by_SIGINT_" : "by_SIGTERM_") + mode;
}

INSTANTIATE_TEST_SUITE_P(InEveryMode, InterruptionOfASearch,
                         ::testing::Combine(::testing::Values(SIGINT, SIGTERM),
                                            ::testing::Values("exact", "extendExact", "imperfect")),
                         case_name);

TEST_F(Interruption, WorksWhereTheCallerIgnoresTheSignal) {
  directory.write("in.fas", random_record("long", 10000000));
  start("trap '' INT; exec quarvo -U 50 in.fas results");
  wait_for_message(" - long\n");
  send(SIGINT);
  expect_stop(SIGINT);
}

TEST_F(Interruption, WorksWhenTheTerminalIsClosed) {
  directory.write("in.fas", records(20));
  const std::string good = good_results("exec quarvo -U 50 in.fas results");
  directory.write("in.fas", records(20) + random_record("long", 10000000));
  start("exec quarvo -U 50 in.fas results");
  wait_for_message(" - long\n");
  send(SIGHUP);
  expect_stop(SIGHUP);
  EXPECT_EQ(file("results"), without_closing_line(good));
}

TEST_F(Interruption, LeavesAHangupToNohup) {
  make_fifo("in.fas");
  start("exec nohup ./quarvo in.fas results >nohup.out </dev/null");
  std::ofstream fifo(path("in.fas"));
  wait_for_message("Search progress");
  send(SIGHUP);
  expect_to_be_running_for_a_while();
  fifo << records(3) << std::flush;
  fifo.close();
  EXPECT_EQ(wait(), 0);
}

TEST_F(Interruption, WorksWhileTheInputIsWaitedFor) {
  make_fifo("in.fas");
  start("exec quarvo in.fas results");
  wait_for_message("Welcome");
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  send(SIGTERM);
  expect_stop(SIGTERM);
  EXPECT_FALSE(directory.has("results"));
}

TEST_F(Interruption, WorksWhileTheInputIsRead) {
  directory.write("in.fas", records(3));
  const std::string good = good_results("exec quarvo -M exact in.fas results");
  std::filesystem::remove(path("in.fas"));
  make_fifo("in.fas");
  start("exec quarvo -M exact in.fas results");
  std::ofstream fifo(path("in.fas"));
  fifo << records(3) << random_record("unfinished", 1000000) << std::flush;
  wait_for_message(" - r3\n");
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  send(SIGINT);
  expect_stop(SIGINT);
  EXPECT_EQ(file("results"), without_closing_line(good));
}

TEST_F(Interruption, WorksWhileNobodyReadsTheMessages) {
  directory.write("in.fas", records(5000));
  make_fifo("fifo");
  start("exec quarvo -M exact in.fas results 2>fifo");
  const int fifo = open_when_full("fifo");
  send(SIGTERM);
  EXPECT_EQ(wait(), 128 + SIGTERM);
  close(fifo);
  EXPECT_TRUE(file("results").ends_with("\" completed.\n"));
}

TEST_F(Interruption, WaitsForTheResultsOfARecord) {
  directory.write("in.fas", records(3) + large_record());
  const std::string good = good_results("exec quarvo -M exact in.fas >results");
  directory.write("in.fas", records(3) + large_record() + records(2));
  make_fifo("fifo");
  start("exec quarvo -M exact in.fas >fifo");
  const int fifo = open_when_full("fifo");
  send(SIGINT);
  expect_to_be_running_for_a_while();
  const std::string results = drain(fifo);
  expect_stop(SIGINT);
  EXPECT_EQ(results, without_closing_line(good));
}

TEST_F(Interruption, WaitsForTheMaskedSymbolsOfARecord) {
  const std::string command = "exec quarvo -M exact --maskX in.fas results";
  directory.write("in.fas", records(3) + large_record());
  const std::string good = good_results(command);
  const std::string good_masked = file("in.fas.masked");
  directory.write("in.fas", records(3) + large_record() + records(2));
  std::filesystem::remove(path("in.fas.masked"));
  make_fifo("in.fas.masked");
  start(command);
  const int fifo = open_when_full("in.fas.masked");
  send(SIGTERM);
  expect_to_be_running_for_a_while();
  const std::string masked = drain(fifo);
  expect_stop(SIGTERM);
  EXPECT_EQ(file("results"), without_closing_line(good));
  EXPECT_EQ(masked, good_masked);
}

TEST_F(Interruption, LeavesWholeRecordsAtEveryMoment) {
  constexpr int count = 500;
  const std::string command = "exec quarvo --maskX in.fas results";
  directory.write("in.fas", records(count));
  const std::string good = good_results(command);
  const std::string good_masked = file("in.fas.masked");
  int stops = 0;
  for (int moment = 1; moment <= count; moment += 8) {
    const int signal = moment % 16 == 1 ? SIGINT : SIGTERM;
    start(command);
    wait_for_message(" - r" + std::to_string(moment) + "\n");
    send(signal);
    const int status = wait();
    const std::string results = file("results");
    if (status == 0) {
      EXPECT_EQ(results, good);
      continue;
    }
    ++stops;
    EXPECT_EQ(status, 128 + signal);
    EXPECT_TRUE(messages().ends_with(stop_text)) << messages();
    EXPECT_FALSE(has(messages(), good_byes));
    EXPECT_TRUE(is_cut_between_records(results, good)) << moment;
    EXPECT_TRUE(good_masked.starts_with(file("in.fas.masked"))) << moment;
    EXPECT_EQ(last_record(file("in.fas.masked")), last_record(results)) << moment;
  }
  EXPECT_GE(stops, 1);
}

}  // namespace
