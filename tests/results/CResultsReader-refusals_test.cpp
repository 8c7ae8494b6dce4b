// Files that are no results, or not whole.

#include <gtest/gtest.h>

#include <algorithm>

#include "read-results.h"
#include "support/gzip-text.h"

namespace {

using kind = results_error::kind_type;
using words = std::vector<std::string>;

class ResultsRefusals : public ResultsTest {
 protected:
  ResultsRefusals() { directory.write("in.fas", ">s1 first\nGGACACACACACGGACNCACACACCACATGG\n>s2\nACGT\n"); }

  void expect_refusal(const std::string& text, kind expected, const std::string& message) {
    const whole_results whole = read_text(text);
    EXPECT_EQ(whole.error.kind, expected) << text;
    EXPECT_TRUE(has(whole.text, message)) << whole.text;
    EXPECT_TRUE(has(whole.text, directory.path("text"))) << whole.text;
  }

  // The results of a run in format 1 with one line replaced by another text, or by none.
  std::string with_line(std::size_t number, const std::string& text) {
    const std::string whole = written();
    std::size_t begin = 0;
    for (std::size_t line = 1; line != number; ++line) begin = whole.find('\n', begin) + 1;
    return whole.substr(0, begin) + text + whole.substr(whole.find('\n', begin) + 1);
  }
};

TEST_F(ResultsRefusals, OfWhatIsNoResultsFile) {
  expect_refusal("", kind::not_results, "empty");
  expect_refusal(">s1\nACGT\n", kind::not_results, "FASTA");
  expect_refusal("chr1\t1\t2\n", kind::not_results, "at line 1, \"# Results computed with:\" was expected");
  expect_refusal(std::string(10000000, 'x'), kind::not_results, "at line 1");
  expect_refusal(std::string(1, '\0'), kind::not_results, "at line 1");
  expect_refusal("# Results computed with:\r\n#    Quarvo, version 3.3.10\r\n", kind::not_results, "CR LF");
  expect_refusal("# Results computed with:\n#    Another\n", kind::not_results, "At line 2");
}

TEST_F(ResultsRefusals, OfFormatsThatTellTooLittle) {
  for (const char* format : {"2", "4"}) {
    const whole_results whole = read_run({"--outputFormat", format});
    EXPECT_EQ(whole.error.kind, kind::not_suited);
    EXPECT_TRUE(has(whole.text, std::string("output format ") + format)) << whole.text;
    EXPECT_TRUE(has(whole.text, "--outputFormat 0, 1 or 3")) << whole.text;
  }
}

TEST_F(ResultsRefusals, OfFilesThatCannotBeRead) {
  const whole_results missing = read_results(directory.path("nosuch"));
  EXPECT_EQ(missing.error.kind, kind::not_opened);
  EXPECT_TRUE(has(missing.text, "No such file")) << missing.text;
  const whole_results folder = read_results(directory.path("."));
  EXPECT_EQ(folder.error.kind, kind::not_opened);
  EXPECT_TRUE(has(folder.text, "Is a directory")) << folder.text;
}

// Whatever a run had written when it was stopped, it is not taken for whole results.
TEST_F(ResultsRefusals, OfEveryBeginningOfAResultsFile) {
  for (const words& options : {words{"--outputFormat", "0"}, words{"--outputFormat", "1", "-f", "3"},
                               words{"--outputFormat", "3"}, words{"--outputFormat", "3", "--sequenceInfoAsComment"}}) {
    const whole_results whole = read_run(options);
    ASSERT_FALSE(whole.error) << whole.text;
    const std::string text = written();
    const std::size_t after_settings = text.find("Print sequence mode");
    for (std::size_t size = 30; size < text.size(); size += size < after_settings ? 19 : 3) {
      ASSERT_EQ(read_text(text.substr(0, size)).error.kind, kind::unfinished) << text.substr(0, size);
    }
    for (std::size_t size = 0; size != 30; ++size) ASSERT_TRUE(read_text(text.substr(0, size)).error);
  }
}

TEST_F(ResultsRefusals, OfEveryBeginningOfACompressedResultsFile) {
  ASSERT_FALSE(read_run({"--outputFormat", "3"}).error);
  for (const std::string& packed : {gzip_member(written()), bgzip_file(written(), 500)}) {
    EXPECT_FALSE(read_text(packed).error);
    EXPECT_EQ(read_text(packed + "x").error.kind, kind::not_read);
    for (std::size_t size = 2; size < packed.size(); size += 3) {
      ASSERT_TRUE(read_text(packed.substr(0, size)).error) << size;
    }
  }
}

TEST_F(ResultsRefusals, SayWhereAFileEnds) {
  ASSERT_FALSE(read_run({}).error);
  const std::string text = written();
  expect_refusal(text.substr(0, text.rfind("## Finished")), kind::unfinished,
                 "ends at line " + std::to_string(count(text, "\n") - 1) +
                     ", without the closing line \"## Finished successfully. ##\"");
}

TEST_F(ResultsRefusals, OfARunThatFailed) {
  directory.write("in.fas", ">s1\nGGACACACACACGG\n>s2\nAC1GT\n");
  run({in(), out()});
  EXPECT_NE(status, 0);
  EXPECT_EQ(read_results(out()).error.kind, kind::unfinished);
}

// Settings that only some runs have may be missing, and a name may go on after its line.
TEST_F(ResultsRefusals, OfLinesThatNoRunWrites) {
  ASSERT_FALSE(read_run({"--outputFormat", "1"}).error);
  const std::string text = written();
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  std::size_t tried = 0;
  for (std::size_t line = 1; line <= lines; ++line) {
    const std::string without = with_line(line, "");
    const bool is_optional = !has(without, "Output file") || !has(without, "Recursion") ||
                             !has(without, "Mismatch score") || !has(without, "reduction") || !has(without, "Indel");
    if (is_optional) continue;
    EXPECT_TRUE(read_text(without).error) << "without line " << line;
    EXPECT_TRUE(read_text(with_line(line, "junk\n")).error) << "line " << line;
    ++tried;
  }
  EXPECT_GT(tried, 40U);
}

TEST_F(ResultsRefusals, OfResultsBehindResults) {
  ASSERT_FALSE(read_run({"--outputFormat", "0"}).error);
  const std::string text = written();
  expect_refusal(text + text, kind::not_results, "the file goes on after its closing line");
  expect_refusal(text + "x", kind::not_results, "the file goes on after its closing line");
}

TEST_F(ResultsRefusals, OfRepeatsThatContradictThemselves) {
  ASSERT_FALSE(read_run({"-M", "exact", "--outputFormat", "0", "--printRepeatSeqMode", "0"}).error);
  const std::string text = written();
  const std::string line =
      "    dinucleotide         3 :        12 |     10 bp |     10 BP |      8 pt | 100.000 % | unit AC\n";
  ASSERT_EQ(count(text, line), 1U) << text;
  const auto expect_refused = [&](const std::string& other) {
    std::string changed = text;
    changed.replace(changed.find(line), line.size(), other);
    expect_refusal(changed, kind::not_results, "was expected");
  };
  const std::string rest = " |     10 BP |      8 pt | 100.000 % | unit AC\n";
  expect_refused("    dinucleotide         3 :        12 |     11 bp" + rest);
  expect_refused("    dinucleotide         0 :         9 |     10 bp" + rest);
  expect_refused("    dinucleotide        90 :        99 |     10 bp" + rest);
  expect_refused("    dinucleotide 99999999999 :        12 |     10 bp" + rest);
  expect_refused("   trinucleotide         3 :        12 |     10 bp" + rest);
  expect_refused("    2-nucleotide         3 :        12 |     10 bp" + rest);
  expect_refused("    dinucleotide         3 :        12 |     10 bp |     10 BP |      8 pt | 100.000 % | unit ac\n");
  expect_refused("    dinucleotide         3 :        12 |     10 bp |     10 BP |      8 pt | 100.000 % | unit AC \n");
  expect_refused(line + "    dinucleotide         2 :        11 |     10 bp" + rest);
}

}  // namespace
