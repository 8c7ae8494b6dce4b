// Input that cannot be read, or not to its end.

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "program-run.h"

namespace {

constexpr int read_failed = -107;
constexpr std::size_t block = 1000000;

class Input : public FaultTest {
 protected:
  void expect_read_failure(const std::string& line, const std::string& reason) {
    EXPECT_TRUE(messages().ends_with(
        "Sorry! Failed to read file\n   \"in.fas\"\nas input file, at line " + line + ": " + reason +
        ".\nThe results end before that. Please run again with a file that can be read to its end.\n" +
        abort_text(read_failed)))
        << messages();
    EXPECT_FALSE(has(messages(), good_byes));
  }
};

// Records over three blocks; the last one begins in the second block.
std::string three_blocks() {
  return records(3) + random_record("middle", block) + records(2) + random_record("end", block + block / 2);
}

class BrokenInput : public Input, public ::testing::WithParamInterface<std::string> {
 protected:
  std::string command = "quarvo --maskX -u 4 -U 4 -M " + GetParam() + " in.fas results";

  int run_with_failing_read(int number) {
    return run(preload + ("QUARVO_FAIL_READ=" + std::to_string(number)) + " exec " + command);
  }
};

TEST_P(BrokenInput, AtItsFirstBlockLeavesTheHeadOfTheResults) {
  directory.write("in.fas", three_blocks());
  const std::string good = good_results(command);
  EXPECT_EQ(run_with_failing_read(1), shell_status(read_failed));
  expect_read_failure("1", "Input/output error");
  EXPECT_TRUE(is_cut_between_records(file("results"), good));
  EXPECT_FALSE(has(file("results"), ">r1\n"));
}

TEST_P(BrokenInput, AtALaterBlockLeavesTheRecordsBeforeIt) {
  directory.write("in.fas", three_blocks());
  const std::string good = good_results(command);
  const std::string good_masked = file("in.fas.masked");
  EXPECT_EQ(run_with_failing_read(2), shell_status(read_failed));
  expect_read_failure("14", "Input/output error");
  EXPECT_EQ(file("results"), good.substr(0, good.find(">middle\n")));
  EXPECT_EQ(file("in.fas.masked"), good_masked.substr(0, good_masked.find(">middle\n")));
  EXPECT_EQ(run_with_failing_read(3), shell_status(read_failed));
  expect_read_failure("24", "Input/output error");
  EXPECT_EQ(file("results"), good.substr(0, good.find(">end\n")));
  EXPECT_EQ(file("in.fas.masked"), good_masked.substr(0, good_masked.find(">end\n")));
}

// Nobody can tell whether the last record of the bytes that could be read is complete.
TEST_P(BrokenInput, BehindItsLastByteLeavesAllRecordsButTheLast) {
  directory.write("in.fas", records(3));
  const std::string good = good_results(command);
  EXPECT_EQ(run_with_failing_read(2), shell_status(read_failed));
  expect_read_failure("13", "Input/output error");
  EXPECT_EQ(file("results"), good.substr(0, good.find(">r3\n")));
  EXPECT_EQ(run_with_failing_read(20), 0);
  EXPECT_EQ(file("results"), good);
}

std::string mode_name(const ::testing::TestParamInfo<std::string>& info) { return info.param; }

INSTANTIATE_TEST_SUITE_P(InEveryMode, BrokenInput, ::testing::Values("exact", "extendExact", "imperfect"), mode_name);

TEST_F(Input, ThatIsMissingIsNotOpened) {
  EXPECT_EQ(run("exec quarvo in.fas results"), shell_status(-101));
  EXPECT_TRUE(messages().ends_with(
      "Sorry! The input file \n   \"in.fas\"\ncould not be opened. I guess it does not exist.\n" + abort_text(-101)));
  EXPECT_FALSE(directory.has("results"));
}

// What root may read anyway is forbidden to it too.
TEST_F(Input, ThatMayNotBeReadIsNotOpened) {
  directory.write("in.fas", records(1));
  ASSERT_EQ(chmod(path("in.fas").c_str(), 0), 0);
  directory.write("as-anyone", "exec setpriv --bounding-set -dac_override,-dac_read_search \"$@\"\n");
  const std::string command = geteuid() == 0 ? "exec bash as-anyone ./quarvo" : "exec quarvo";
  EXPECT_EQ(run(command + " in.fas results"), shell_status(-101));
  EXPECT_TRUE(messages().ends_with(abort_text(-101))) << messages();
  EXPECT_FALSE(directory.has("results"));
}

TEST_F(Input, WithAHeaderBeyondTheLimitIsNotTakenForWantOfMemory) {
  constexpr std::uintmax_t limit = 2147483647;
  if (QUARVO_IS_SANITIZED) GTEST_SKIP() << "takes too much memory under sanitizers";
  if (sysconf(_SC_AVPHYS_PAGES) < 6 * (static_cast<long>(limit) / sysconf(_SC_PAGESIZE))) {
    GTEST_SKIP() << "not enough memory";
  }
  directory.write("in.fas", ">");
  std::filesystem::resize_file(path("in.fas"), limit + 2);
  EXPECT_EQ(run("exec quarvo in.fas results"), shell_status(-105));
  EXPECT_TRUE(messages().ends_with("Sorry! The header in line 1\nhas more than 2147483647 bytes. Please shorten it.\n" +
                                   abort_text(-105)))
      << messages();
}

// The stream that messages go to cannot tell that it is the input.
TEST_F(Input, ThatIsAStandardStreamIsNeverWritten) {
  const std::string fasta = records(3);
  directory.write("in.fas", fasta);
  std::filesystem::create_hard_link(path("in.fas"), path("link"));
  for (const char* const words : {"in.fas >>in.fas", "in.fas 1<>in.fas", "in.fas >>link", "in.fas results >>in.fas",
                                  "/dev/stdin <in.fas >>in.fas"}) {
    EXPECT_EQ(run(std::string("exec quarvo ") + words), shell_status(-102)) << words;
    EXPECT_TRUE(
        messages().ends_with("Sorry! Failed to open file\n   \"standard output\"\nas output file.\n"
                             "It is the input file.\n" +
                             abort_text(-102)))
        << messages();
    EXPECT_EQ(file("in.fas"), fasta) << words;
  }
  for (const char* const words :
       {"in.fas 2>>in.fas", "-s 12 link results 2<>in.fas", "in.fas >>in.fas 2>&1", "--nosuch in.fas 2>>in.fas",
        "--help in.fas 2>>in.fas >out", "-- in.fas 2>>link", "a in.fas b 2>>in.fas"}) {
    EXPECT_EQ(run(std::string("exec quarvo ") + words), shell_status(-102)) << words;
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(file("in.fas"), fasta) << words;
  }
  EXPECT_FALSE(directory.has("results"));
}

TEST_F(Input, MayBeNamedBesideALogOfAnotherName) {
  directory.write("in.fas", records(3));
  EXPECT_EQ(run("exec quarvo in.fas results 2>>log"), 0);
  EXPECT_TRUE(file("log").ends_with(good_byes));
  EXPECT_EQ(run("exec quarvo in.fas log 2>>log"), 0);
}

TEST_F(Input, ThatIsADirectoryReadsAsAnEmptyFile) {
  std::filesystem::create_directory(path("in.fas"));
  EXPECT_EQ(run("exec quarvo in.fas results"), shell_status(-25));
  EXPECT_TRUE(
      messages().ends_with("\n\nAn error occurred while reading the input file. It might not be a valid fasta "
                           "file.\nFile position: line 1\n"))
      << messages();
}

TEST_F(Input, MayBeAPipe) {
  directory.write("data", three_blocks());
  ASSERT_EQ(mkfifo(path("in.fas").c_str(), 0600), 0);
  const std::string command = "quarvo -M exact in.fas results";
  const std::string from_pipe = good_results("cat data >in.fas & " + command);
  std::filesystem::remove(path("in.fas"));
  std::filesystem::rename(path("data"), path("in.fas"));
  EXPECT_EQ(from_pipe, good_results(command));
}

TEST_F(Input, MayBeAPipeThatEndsEarly) {
  ASSERT_EQ(mkfifo(path("in.fas").c_str(), 0600), 0);
  EXPECT_EQ(run(": >in.fas & exec quarvo in.fas results"), shell_status(-25));
  EXPECT_TRUE(has(messages(), "It might not be a valid fasta file.\nFile position: line 1\n")) << messages();
}

// Lets the program go on when the file has been dealt with: it cannot open its results before that.
class ChangedInput : public Input {
 protected:
  std::string command = "exec quarvo -M exact in.fas fifo";

  void start_and_wait_for_the_input_to_be_open() {
    directory.write("in.fas", records(3) + random_record("long", 2 * block));
    good = good_results("quarvo -M exact in.fas fifo && mv fifo results");
    ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
    start(command);
    for (int i = 0; i < 120000 && !waits_for_a_reader(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    ASSERT_TRUE(waits_for_a_reader());
  }

  // The rest of the run, with its results left in the file `results`.
  int finish() const { return std::system(("cat '" + path("fifo") + "' >'" + path("results") + "'").c_str()); }

  std::string good;

 private:
  // A process that has only just opened the input may not have looked at its size yet; one that sleeps after that has.
  bool waits_for_a_reader() const { return has_input_open() && is_asleep(); }

  bool is_asleep() const {
    std::ifstream file("/proc/" + std::to_string(process_id()) + "/stat");
    std::string state;
    return std::getline(file, state) && has(state, ") S ");
  }

  bool has_input_open() const {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(process_id()) + "/fd")) {
      if (std::filesystem::read_symlink(entry, ignored) == path("in.fas")) return true;
    }
    return false;
  }
};

TEST_F(ChangedInput, ThatIsRemovedIsReadToItsEnd) {
  start_and_wait_for_the_input_to_be_open();
  std::filesystem::remove(path("in.fas"));
  ASSERT_EQ(finish(), 0);
  EXPECT_EQ(wait(), 0);
  EXPECT_EQ(file("results"), good);
}

TEST_F(ChangedInput, ThatBecomesShorterIsAnError) {
  start_and_wait_for_the_input_to_be_open();
  std::filesystem::resize_file(path("in.fas"), block + block / 2);
  ASSERT_EQ(finish(), 0);
  EXPECT_EQ(wait(), shell_status(read_failed));
  expect_read_failure("14", "It has become shorter while it was read");
  EXPECT_EQ(file("results"), good.substr(0, good.find(">long\n")));
}

TEST_F(ChangedInput, ThatBecomesEmptyIsAnError) {
  start_and_wait_for_the_input_to_be_open();
  std::filesystem::resize_file(path("in.fas"), 0);
  ASSERT_EQ(finish(), 0);
  EXPECT_EQ(wait(), shell_status(read_failed));
  expect_read_failure("1", "It has become shorter while it was read");
}

TEST_F(ChangedInput, ThatBecomesLongerIsReadToItsNewEnd) {
  start_and_wait_for_the_input_to_be_open();
  std::ofstream(path("in.fas"), std::ios::app) << records(1);
  ASSERT_EQ(finish(), 0);
  EXPECT_EQ(wait(), 0);
  EXPECT_TRUE(file("results").starts_with(without_closing_line(good)));
  EXPECT_TRUE(has(file("results").substr(good.size() - 40), ">r1\n"));
}

}  // namespace
