// Memory that runs out at every allocation in turn, alone or for good: the run ends with a message and an error, or
// with exactly the right results.

#include <algorithm>
#include <csignal>

#include "program-run.h"
#include "support/gzip-text.h"

namespace {

// Under sanitizers a run takes many times as long.
constexpr int step = QUARVO_IS_SANITIZED ? 7 : 1;

// Allocations of a search that are tried, beside those of the command line.
constexpr int most_in_search = 300;

constexpr int out_of_memory = -106;
constexpr const char* no_memory =
    "\nSorry! There is not enough memory for this run.\nPlease give it more memory, or split the longest sequences.\n";
// A repeat whose edits find no room ends the run like this, and with status 0.
constexpr const char* no_memory_for_edits = "Program aborded due to failed realloc!\n";

class OutOfMemory : public FaultTest, public ::testing::WithParamInterface<std::tuple<std::string, bool>> {
 protected:
  const std::string mode = std::get<0>(GetParam());
  const bool is_for_good = std::get<1>(GetParam());
  std::string good;
  std::string good_masked;

  OutOfMemory() { std::filesystem::create_symlink(QUARVO_FAILING_ALLOCATIONS, path("failing")); }

  std::string command(const std::string& input) const {
    return "failing --maskX -U 20 -M " + mode + " " + input + " results >out";
  }

  // Of a run of the command, which must end with that status.
  int count_allocations(const std::string& input, int status) {
    EXPECT_EQ(run("QUARVO_COUNT_ALLOCATIONS=count exec " + command(input)), status);
    return std::stoi(file("count"));
  }

  void run_with_failing_allocation(int number) {
    SCOPED_TRACE("allocation " + std::to_string(number));
    for (const char* const name : {"results", "in.fas.masked"}) std::filesystem::remove(path(name));
    const std::string after = is_for_good ? "QUARVO_FAIL_ALL_BEHIND=1 " : "";
    const int status =
        run("QUARVO_FAIL_ALLOCATION=" + std::to_string(number) + " " + after + "exec " + command("in.fas"));
    expect_end(status);
    EXPECT_TRUE(is_beginning(file("results"), good));
    EXPECT_TRUE(is_beginning(file("in.fas.masked"), good_masked));
  }

  // At every allocation after the command line, or there too.
  void fail_allocations(const std::string& input, bool also_in_command_line, int most, int each) {
    directory.write("in.fas", input);
    const int in_search = count_allocations("in.fas", 0);
    good = file("results");
    good_masked = file("in.fas.masked");
    const int before_search = count_allocations("missing", shell_status(-101));
    ASSERT_GT(in_search, before_search);
    const int first = also_in_command_line ? 1 : before_search;
    const int last = std::min(in_search + 1, before_search + most);
    for (int n = first; n < last; n += each) run_with_failing_allocation(n);
    run_with_failing_allocation(last);
  }

 private:
  void expect_end(int status) {
    if (status != 0) {
      expect_error(status);
    } else if (file("out") == no_memory_for_edits) {
      EXPECT_NE(mode, "exact");
      EXPECT_TRUE(is_cut_between_records(file("results"), good));
    } else {
      EXPECT_EQ(file("out"), "");
      EXPECT_TRUE(messages().ends_with(good_byes));
      EXPECT_EQ(file("results"), good);
      EXPECT_EQ(file("in.fas.masked"), good_masked);
    }
  }

  // What a library opens may fail for want of memory too.
  void expect_error(int status) {
    EXPECT_FALSE(has(messages(), good_byes));
    if (status == shell_status(out_of_memory)) {
      EXPECT_TRUE(messages().ends_with(no_memory + abort_text(out_of_memory))) << messages();
    } else {
      EXPECT_TRUE(status == shell_status(-101) || status == shell_status(-102) || status == shell_status(-103))
          << status << messages();
      EXPECT_TRUE(messages().ends_with(abort_text(status - 256))) << messages();
    }
  }

  static bool is_beginning(const std::string& part, const std::string& whole) {
    return whole.starts_with(part) && (part.empty() || part.ends_with("\n"));
  }
};

TEST_P(OutOfMemory, IsToldOrDoesNoHarm) {
  // The command line is the same in every mode.
  fail_allocations(records(80), mode == "exact", most_in_search, step);
}

class OutOfMemoryOnCompressedInput : public OutOfMemory {};

// The decoder has all its memory before the first record is searched.
TEST_P(OutOfMemoryOnCompressedInput, IsToldOrDoesNoHarm) { fail_allocations(gzip_member(records(80)), false, 60, 1); }

std::string case_name(const ::testing::TestParamInfo<OutOfMemory::ParamType>& info) {
  const auto& [mode, is_for_good] = info.param;
  return mode + (is_for_good ? "_for_good" : "_once");
}

INSTANTIATE_TEST_SUITE_P(InEveryMode, OutOfMemory,
                         ::testing::Combine(::testing::Values("exact", "extendExact", "imperfect"), ::testing::Bool()),
                         case_name);

// The reader is the same in every mode.
INSTANTIATE_TEST_SUITE_P(InOneMode, OutOfMemoryOnCompressedInput,
                         ::testing::Combine(::testing::Values("exact"), ::testing::Bool()), case_name);

// The libraries allocate before main runs, and so does whoever throws. From the smallest memory in which the program is
// loaded at all, it ends with its message or does its work.
class SmallMemory : public FaultTest {
 protected:
  // Runs the command with sizes of memory, close to each other at first, up to the first that suffices for it.
  void expect_message_until_it_fits(const std::string& command, int status, const std::string& message) {
    if (QUARVO_IS_SANITIZED) GTEST_SKIP() << "no memory limit under the address sanitizer";
    constexpr int largest = 64000;
    int told = 0;
    for (int kilobytes = 4000; kilobytes < largest; kilobytes += told < 8 ? 16 : 256) {
      const int end = run("ulimit -v " + std::to_string(kilobytes) + "; exec " + command);
      if (end == 0) break;
      ASSERT_NE(end, -SIGABRT) << kilobytes << messages();
      if (end == status) ++told;
      if (told == 0) continue;
      ASSERT_EQ(end, status) << kilobytes << messages();
      ASSERT_TRUE(messages().ends_with(message)) << messages();
    }
    EXPECT_GE(told, 2);
  }
};

TEST_F(SmallMemory, IsTold) {
  directory.write("in.fas", records(3));
  expect_message_until_it_fits("quarvo -M exact in.fas results", shell_status(out_of_memory),
                               no_memory + abort_text(out_of_memory));
}

TEST_F(SmallMemory, IsToldByTheConverter) {
  directory.write("in.fas", records(3));
  good_results("quarvo in.fas results");
  expect_message_until_it_fits(QUARVO_CONVERT " -t multiqc results >out", 7,
                               "Sorry! There is not enough memory for this conversion.\n");
}

}  // namespace
