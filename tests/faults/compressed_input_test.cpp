// Compressed input that cannot be read to its end.

#include <csignal>

#include "program-run.h"
#include "support/gzip-text.h"

namespace {

constexpr int read_failed = -107;
constexpr std::size_t block = 1000000;

class CompressedInput : public FaultTest {
 protected:
  static constexpr const char* command = "quarvo --maskX -u 4 -U 4 -M exact in.fas results";

  void expect_read_failure(const std::string& reason) {
    EXPECT_TRUE(messages().ends_with(
        ": " + reason + ".\nThe results end before that. Please run again with a file that can be read to its end.\n" +
        abort_text(read_failed)))
        << messages();
    EXPECT_FALSE(has(messages(), good_byes));
  }
};

// Stored as they are, so that the compressed file has as many blocks as the text.
TEST_F(CompressedInput, ThatBreaksLeavesTheRecordsBefore) {
  const std::string text = records(3) + random_record("middle", block) + records(2);
  directory.write("in.fas", gzip_member(text, {}, 0));
  const std::string good = good_results(command);
  const std::string good_masked = file("in.fas.masked");
  for (const int read : {2, 3}) {
    EXPECT_EQ(run(std::string(preload) + "QUARVO_FAIL_READ=" + std::to_string(read) + " exec " + command),
              shell_status(read_failed));
    expect_read_failure("Input/output error");
    const std::string first_missing = read == 2 ? ">middle\n" : ">r2\n";  // the last record is never complete
    const std::size_t end = good.find(first_missing, read == 2 ? 0 : good.find(">middle\n"));
    const std::size_t masked_end = good_masked.find(first_missing, read == 2 ? 0 : good_masked.find(">middle\n"));
    EXPECT_EQ(file("results"), good.substr(0, end));
    EXPECT_EQ(file("in.fas.masked"), good_masked.substr(0, masked_end));
  }
}

// A results file that ends like one of a whole run must be one.
TEST_F(CompressedInput, ThatIsCutOffAnywhereNeverLooksWhole) {
  const std::string whole = gzip_member(records(40));
  directory.write("in.fas", whole);
  const std::string good = good_results(command);
  for (std::size_t length = 2; length < whole.size(); length += whole.size() / 25) {
    directory.write("in.fas", whole.substr(0, length));
    EXPECT_EQ(run(std::string("exec ") + command), shell_status(read_failed)) << length;
    expect_read_failure("It is compressed and its end is missing");
    EXPECT_TRUE(is_cut_between_records(file("results"), good)) << length;
  }
}

TEST_F(CompressedInput, ThatIsDamagedAnywhereNeverLooksWhole) {
  const std::string whole = bgzip_file(records(40), 2000);
  directory.write("in.fas", whole);
  const std::string good = good_results(command);
  int harmless = 0;
  for (std::size_t place = 12; place < whole.size(); place += 1 + whole.size() / 40) {
    std::string damaged = whole;
    damaged[place] = static_cast<char>(~damaged[place]);
    directory.write("in.fas", damaged);
    const int status = run(std::string("exec ") + command);
    if (status == 0) {  // in a field that does not matter, such as the time
      ++harmless;
      EXPECT_EQ(file("results"), good) << place;
    } else {
      EXPECT_EQ(status, shell_status(read_failed)) << place << messages();
      EXPECT_FALSE(has(messages(), good_byes));
    }
  }
  EXPECT_LT(harmless, 10);
}

// The writer of a pipe may die: what it wrote is an intact beginning of a file.
TEST_F(CompressedInput, FromAPipeWhoseWriterStopsIsAnError) {
  const std::string blocks = bgzip_file(records(10), 500);
  directory.write("data", blocks.substr(0, blocks.size() - bgzip_block("").size()));
  EXPECT_EQ(run("cat data | (exec quarvo -M exact /dev/stdin results); exit ${PIPESTATUS[1]}"),
            shell_status(read_failed));
  expect_read_failure("It is compressed in blocks and its last ones are missing");
}

// The program itself holds the pipe open, and so waits for the rest of a record for ever.
TEST_F(CompressedInput, LetsTheUserStopTheRun) {
  directory.write("data", gzip_member(records(3)).substr(0, 100));
  start("mkfifo pipe; exec 3<>pipe; cat data >&3; exec quarvo -M exact pipe results");
  wait_for_message("Search progress");
  send(SIGINT);
  EXPECT_EQ(wait(), 128 + SIGINT);
  EXPECT_TRUE(messages().ends_with(stop_text)) << messages();
}

}  // namespace
