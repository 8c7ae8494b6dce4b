// Files and streams that take no more: full disks, limits, closed streams.

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

#include "program-run.h"

namespace {

constexpr int write_failed = -104;
constexpr const char* as_results = "as output file.";
constexpr const char* as_masked = "as file for the masked sequences.";

class Output : public FaultTest {
 protected:
  void expect_write_failure(int status, const std::string& name, const std::string& role) {
    EXPECT_EQ(status, shell_status(write_failed));
    EXPECT_TRUE(messages().ends_with("Sorry! Failed to write file\n   \"" + name + "\"\n" + role + "\n" +
                                     abort_text(write_failed)))
        << messages();
    EXPECT_FALSE(has(messages(), good_byes));
  }
};

// Every byte of the results may be the first that finds no room: in the head, in a record, at its end, in the last
// line.
TEST_F(Output, MayReachItsLargestSizeAnywhereInTheResults) {
  const std::string command = "exec quarvo in.fas results";
  directory.write("in.fas", records(4));
  const std::string good = good_results(command);
  const auto length = static_cast<long>(good.size());
  long step = 31;
  for (long limit = 0; limit < length; limit += step) {
    expect_write_failure(run(command, limit), "results", as_results);
    EXPECT_EQ(file("results"), good.substr(0, static_cast<std::size_t>(limit)));
    if (limit + step >= length) step = 1;
  }
  EXPECT_EQ(run(command, length), 0);
  EXPECT_EQ(file("results"), good);
}

TEST_F(Output, MayReachItsLargestSizeInTheResultsOfALargeRecord) {
  const std::string command = "exec quarvo -M exact in.fas results";
  std::string fasta = ">large\n";
  for (int i = 0; i < 4000; ++i) fasta += "ACACACACACACACGTTGCA\n";
  directory.write("in.fas", records(2) + fasta);
  const std::string good = good_results(command);
  ASSERT_GT(good.size(), 300000U);
  for (const long limit : {65536L, 65537L, 200001L, static_cast<long>(good.size()) - 1}) {
    expect_write_failure(run(command, limit), "results", as_results);
    EXPECT_EQ(file("results"), good.substr(0, static_cast<std::size_t>(limit)));
  }
}

// The results of these records are shorter than their masked sequences.
TEST_F(Output, MayReachItsLargestSizeAnywhereInTheMaskedSequences) {
  const std::string command = "exec quarvo --maskX --outputFormat 4 in.fas results";
  directory.write("in.fas", random_record("r1", 4000) + random_record("r2", 3000));
  const std::string good = good_results(command);
  const std::string good_masked = file("in.fas.masked");
  const auto length = static_cast<long>(good_masked.size());
  ASSERT_GT(length, static_cast<long>(good.size()));
  long step = 131;
  for (auto limit = static_cast<long>(good.size()); limit < length; limit += step) {
    expect_write_failure(run(command, limit), "in.fas.masked", as_masked);
    EXPECT_EQ(file("in.fas.masked"), good_masked.substr(0, static_cast<std::size_t>(limit)));
    EXPECT_TRUE(good.starts_with(file("results")));
    if (limit + step >= length) step = 1;
  }
  EXPECT_EQ(run(command, length), 0);
  EXPECT_EQ(file("in.fas.masked"), good_masked);
}

TEST_F(Output, MayReachItsLargestSizeOnStandardOutput) {
  directory.write("in.fas", records(4));
  expect_write_failure(run("exec quarvo in.fas >results", 3000), "standard output", as_results);
  EXPECT_EQ(file("results").size(), 3000U);
}

TEST_F(Output, MayFindTheDeviceFull) {
  directory.write("in.fas", records(1));
  const std::string good = good_results("exec quarvo --maskX in.fas results");
  std::filesystem::remove(path("in.fas.masked"));
  directory.write("in.fas", records(4));
  expect_write_failure(run("exec quarvo in.fas /dev/full"), "/dev/full", as_results);
  EXPECT_FALSE(has(messages(), " - r1\n"));
  expect_write_failure(run("exec quarvo in.fas >/dev/full"), "standard output", as_results);
  std::filesystem::create_symlink("/dev/full", path("in.fas.masked"));
  expect_write_failure(run("exec quarvo --maskX in.fas results"), "in.fas.masked", as_masked);
  EXPECT_TRUE(has(messages(), " - r1\n"));
  EXPECT_FALSE(has(messages(), " - r2\n"));
  EXPECT_EQ(file("results"), without_closing_line(good));
}

// A disk of a few pages of memory, that only the processes of the command see.
class FullDisk : public Output {
 protected:
  int run_on_disk(int kilobytes, const std::string& command) {
    directory.write("on-disk", "mount -t tmpfs -o size=" + std::to_string(kilobytes) +
                                   "k none disk && ln -s ../in.fas disk/in.fas || exit 77\n" + command +
                                   "\nstatus=$?\ncp disk/* copies\nexit $status\n");
    std::filesystem::create_directory(path("disk"));
    std::filesystem::create_directory(path("copies"));
    return run("unshare --user --map-root-user --mount bash on-disk || exit $?");
  }
};

TEST_F(FullDisk, LeavesTheBeginningOfTheFiles) {
  const std::string command = "quarvo --maskX disk/in.fas disk/results";
  directory.write("in.fas", records(100));
  if (const int status = run_on_disk(1000, command); status != 0) {
    GTEST_SKIP() << "no disk of its own for an ordinary user here, status " << status << ": " << messages();
  }
  const std::string good = file("copies/results");
  const std::string good_masked = file("copies/in.fas.masked");
  for (const int kilobytes : {4, 8, 12, 16, 20, 24, 28, 32}) {
    const int status = run_on_disk(kilobytes, command);
    const std::string results = file("copies/results");
    const std::string masked = file("copies/in.fas.masked");
    EXPECT_TRUE(good.starts_with(results));
    EXPECT_TRUE(good_masked.starts_with(masked));
    EXPECT_LE(results.size() + masked.size(), static_cast<std::size_t>(kilobytes) * 1024);
    const bool is_masked = has(messages(), as_masked);
    expect_write_failure(status, is_masked ? "disk/in.fas.masked" : "disk/results", is_masked ? as_masked : as_results);
  }
}

// File systems across a network may tell only at the close that there is no room.
TEST_F(Output, MayFailAtTheCloseOfTheResults) {
  directory.write("in.fas", records(2));
  const std::string good = good_results("quarvo in.fas results");
  expect_write_failure(run(std::string("QUARVO_FAIL_CLOSE=1 ") + preload + "exec quarvo in.fas results"), "results",
                       as_results);
  EXPECT_EQ(file("results"), good);
}

TEST_F(Output, MayFailAtTheCloseOfTheMaskedSequences) {
  directory.write("in.fas", records(2));
  const std::string good = good_results("quarvo in.fas results");
  expect_write_failure(run(std::string("QUARVO_FAIL_CLOSE=1 ") + preload + "exec quarvo --maskX in.fas results"),
                       "in.fas.masked", as_masked);
  EXPECT_FALSE(has(file("results"), "Finished successfully"));
}

TEST_F(Output, MayFailAtTheCloseOfStandardOutput) {
  directory.write("in.fas", records(2));
  expect_write_failure(run(std::string("QUARVO_FAIL_CLOSE=1 ") + preload + "exec quarvo in.fas >results"),
                       "standard output", as_results);
}

TEST_F(Output, MayBeAClosedStandardOutput) {
  directory.write("in.fas", records(2));
  expect_write_failure(run("exec quarvo in.fas >&-"), "standard output", as_results);
}

// No file of the run may get the number of a closed stream: the messages would land in it.
TEST_F(Output, IsWholeWithoutStandardStreams) {
  directory.write("in.fas", records(2));
  const std::string good = good_results("quarvo --maskX in.fas results");
  const std::string good_masked = file("in.fas.masked");
  for (const char* const closed : {"2>&-", "<&- >&-", "<&- >&- 2>&-"}) {
    EXPECT_EQ(run(std::string("exec quarvo --maskX in.fas results ") + closed), 0) << closed;
    EXPECT_EQ(file("results"), good) << closed;
    EXPECT_EQ(file("in.fas.masked"), good_masked) << closed;
  }
}

TEST_F(Output, IsWholeWhenNobodyReadsTheMessages) {
  directory.write("in.fas", records(200));
  const std::string good = good_results("quarvo in.fas results");
  EXPECT_EQ(run("mkfifo fifo; : <fifo & exec 2>fifo; wait; exec quarvo in.fas results"), 0);
  EXPECT_EQ(file("results"), good);
  EXPECT_EQ(run("exec quarvo in.fas results 2>/dev/full"), 0);
  EXPECT_EQ(file("results"), good);
}

TEST_F(Output, ToAClosedPipeEndsAsOtherFiltersDo) {
  directory.write("in.fas", records(200));
  EXPECT_EQ(run("mkfifo fifo; : <fifo & exec >fifo; wait; exec quarvo in.fas"), -SIGPIPE);
  EXPECT_FALSE(has(messages(), good_byes));
}

TEST_F(Output, ToAClosedNamedPipeIsAnError) {
  directory.write("in.fas", records(2000));
  expect_write_failure(run("mkfifo fifo; head -c 3000 fifo >begin & exec quarvo in.fas fifo"), "fifo", as_results);
}

}  // namespace
