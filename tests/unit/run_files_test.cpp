// Whole runs that meet files they cannot or must not write.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/run.h"

namespace {

constexpr const char* fasta = ">s1\nGGACACACACACGG\n";

class RunOnFiles : public RunTest {
 protected:
  RunOnFiles() { directory.write("in.fas", fasta); }

  std::string masked() const { return in() + ".masked"; }

  void expect_end(int expected_status, const std::string& problem, const std::string& name, const std::string& role,
                  const std::string& reason = "") {
    EXPECT_EQ(status, expected_status);
    EXPECT_TRUE(ends_with(messages, "Sorry! Failed to " + problem + " file\n   \"" + name + "\"\n" + role + "\n" +
                                        reason + "\nAnalysis has been aborted due to errors. Error number: " +
                                        std::to_string(expected_status) + "\n\n"))
        << messages;
    EXPECT_FALSE(has(messages, "goodbye"));
    EXPECT_EQ(directory.contents("in.fas"), fasta);
  }

  static constexpr const char* as_results = "as output file.";
  static constexpr const char* as_masked = "as file for the masked sequences.";
  static constexpr const char* is_input = "It is the input file.\n";
};

TEST_F(RunOnFiles, FailAtAResultsFileThatCannotBeOpened) {
  const std::string name = directory.path("missing/out.txt");
  run({in(), name});
  expect_end(-102, "open", name, as_results);
}

TEST_F(RunOnFiles, RefuseTheInputFileAsResultsFile) {
  run({in(), in()});
  expect_end(-102, "open", in(), as_results, is_input);
}

TEST_F(RunOnFiles, RefuseTheInputFileUnderAnotherNameAsResultsFile) {
  std::filesystem::create_hard_link(in(), out());
  run({in(), out()});
  expect_end(-102, "open", out(), as_results, is_input);
}

TEST_F(RunOnFiles, FailAtAMaskedFileThatCannotBeOpenedBeforeAnySearch) {
  std::filesystem::create_directory(masked());
  run({"--maskX", in(), out()});
  expect_end(-103, "open", masked(), as_masked, "It cannot be written: Is a directory.\n");
  EXPECT_FALSE(has(messages, "bp - s1"));
}

TEST_F(RunOnFiles, RefuseTheInputFileAsMaskedFile) {
  std::filesystem::create_symlink(in(), masked());
  run({"--maskX", in(), out()});
  expect_end(-103, "open", masked(), as_masked, is_input);
  EXPECT_FALSE(directory.has("out.txt"));
}

TEST_F(RunOnFiles, RefuseOneFileForResultsAndMaskedRecords) {
  directory.write("in.fas.masked", "precious\n");
  run({"--maskX", in(), masked()});
  EXPECT_EQ(directory.contents("in.fas.masked"), "precious\n");
  expect_end(-103, "open", masked(), as_masked, "It is the file for the results.\n");
}

TEST_F(RunOnFiles, DoNotRefuseADeviceAsResultsFile) {
  run({in(), "/dev/null"});
  EXPECT_EQ(status, 0);
}

TEST_F(RunOnFiles, FailAtAFullResultsFile) {
  run({in(), "/dev/full"});
  expect_end(-104, "write", "/dev/full", as_results);
}

TEST_F(RunOnFiles, FailAtAFullMaskedFile) {
  std::filesystem::create_symlink("/dev/full", masked());
  run({"--maskX", in(), out()});
  expect_end(-104, "write", masked(), as_masked);
}

TEST_F(RunOnFiles, ReplaceAnOldResultsFile) {
  directory.write("out.txt", std::string(10000, 'x'));
  run({in(), out()});
  EXPECT_EQ(status, 0);
  EXPECT_FALSE(has(directory.contents("out.txt"), "xx"));
}

}  // namespace
