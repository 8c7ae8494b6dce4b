// Whole runs of quarvo-report on what quarvo writes: the page where all is well, a message and a status where not.

#include "report-run.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include "companion.h"
#include "read-results.h"

namespace {

class ReportRun : public RunTest {
 protected:
  ReportRun() {
    directory.write("in.fas", ">one of two\nGGTACACACACACACACTGGT\n>two\nTTTAAGAAGAAGAAGAAGAAGCCT\n");
    run({in(), out()});
    EXPECT_EQ(status, 0);
  }

  int report(std::vector<std::string> words) {
    words.insert(words.begin(), "quarvo-report");
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const int report_status = run_report(static_cast<int>(words.size()), argv.data());
    messages = ::testing::internal::GetCapturedStderr();
    results = ::testing::internal::GetCapturedStdout();
    return report_status;
  }

  std::string page() const { return directory.path("page.html"); }
};

TEST_F(ReportRun, WritesThePage) {
  EXPECT_EQ(report({out(), "-o", page()}), 0);
  const std::string written = directory.contents("page.html");
  EXPECT_TRUE(written.starts_with(
      "<page>{\"version\":1,\"program\":\"Quarvo, version 3.3.10\",\"results\":{\"name\":\"out.txt\""));
  EXPECT_TRUE(ends_with(written, "}}</page>\n"));
  EXPECT_TRUE(has(written, "\"title\":[\"of two\",\"\"],\"length\":[21,24]"));
  EXPECT_EQ(messages, "");
}

TEST_F(ReportRun, WritesToStandardOutput) {
  EXPECT_EQ(report({out()}), 0);
  const std::string to_console = results;
  EXPECT_EQ(report({"--output", page(), out()}), 0);
  EXPECT_EQ(to_console, directory.contents("page.html"));
  EXPECT_EQ(report({"-o", "-", out()}), 0);
  EXPECT_EQ(to_console, results);
}

TEST_F(ReportRun, ReadsStandardInput) {
  const int input_before = dup(STDIN_FILENO);
  const int input = open(out().c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(dup2(input, STDIN_FILENO), STDIN_FILENO);
  EXPECT_EQ(report({"-o", page(), "-"}), 0);
  dup2(input_before, STDIN_FILENO);
  close(input_before);
  close(input);
  EXPECT_TRUE(has(directory.contents("page.html"), "\"title\":[\"of two\",\"\"],\"length\":[21,24]"));
}

TEST_F(ReportRun, RefusesWhatCannotBeRead) {
  EXPECT_EQ(report({directory.path("nosuch"), "-o", page()}), companion_status::not_read);
  EXPECT_TRUE(has(messages, "nosuch"));
  EXPECT_EQ(report({in(), "-o", page()}), companion_status::not_results);
  EXPECT_TRUE(has(messages, "in.fas"));
}

TEST_F(ReportRun, RefusesUnfinishedResultsAndLeavesAnOlderPage) {
  const std::string whole = directory.contents("out.txt");
  directory.write("page.html", "older");
  for (std::size_t size = whole.size() - 1; size > whole.size() - 40; --size) {
    EXPECT_EQ(report({directory.write("cut", whole.substr(0, size)), "-o", page()}), companion_status::unfinished);
    EXPECT_EQ(directory.contents("page.html"), "older");
  }
}

TEST_F(ReportRun, LeavesNoPageWhenTheResultsAreBad) {
  const std::string whole = directory.contents("out.txt");
  EXPECT_NE(report({directory.write("cut", whole.substr(0, whole.size() - 60)), "-o", page()}), 0);
  EXPECT_NE(access(page().c_str(), F_OK), 0);
}

TEST_F(ReportRun, WantsOneResultsFile) {
  EXPECT_EQ(report({out(), out(), "-o", page()}), companion_status::command_line);
  EXPECT_TRUE(has(messages, "one results file"));
}

TEST_F(ReportRun, NeverReplacesItsInput) {
  const std::string before = directory.contents("out.txt");
  EXPECT_EQ(report({out(), "-o", out()}), companion_status::not_written);
  ASSERT_EQ(link(out().c_str(), page().c_str()), 0);
  EXPECT_EQ(report({out(), "-o", page()}), companion_status::not_written);
  EXPECT_EQ(directory.contents("out.txt"), before);
}

TEST_F(ReportRun, SaysWhenThePageCannotBeWritten) {
  EXPECT_EQ(report({out(), "-o", directory.path("nosuch/page.html")}), companion_status::not_written);
  EXPECT_TRUE(has(messages, "nosuch/page.html"));
  EXPECT_EQ(report({out(), "-o", "/dev/full"}), companion_status::not_written);
  EXPECT_TRUE(has(messages, "/dev/full"));
}

TEST_F(ReportRun, ShowsHostileNamesAsText) {
  directory.write("in.fas", ">a</script><script>alert(1)</script> \"&\x01\xff\nGGTACACACACACACACTGGT\n");
  run({in(), out()});
  EXPECT_EQ(report({out()}), 0);
  EXPECT_FALSE(has(results, "<script"));
  EXPECT_TRUE(has(results, R"(["a\u003c/script\u003e\u003cscript\u003ealert(1)\u003c/script\u003e"])"));
  EXPECT_TRUE(has(results, "[\"\\\"\\u0026\\u0001\xef\xbf\xbd\"]"));
}

}  // namespace
