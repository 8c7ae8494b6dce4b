// The file that is written, and gets its name when it is complete.

#include "CConvertedFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "CByteSource.h"
#include "CTemporaryFile.h"
#include "out-of-memory.h"
#include "support/temporary-directory.h"
#include "text-output.h"

namespace {

namespace fs = std::filesystem;

// With files that have no name until they are complete, and as on file systems that have none.
class ConvertedFileTest : public ::testing::Test {
 protected:
  CTemporaryDirectory directory;

  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory.path(""))) names.push_back(entry.path().filename());
    return names;
  }

  fs::perms mode(const std::string& name) const { return fs::status(directory.path(name)).permissions(); }

  // A process that opens the file and then does that.
  template <typename End>
  void open_and(const std::string& name, End end) const {
    CConvertedFile file;
    if (!file.open(name, {})) std::exit(1);
    write(file.stream(), "text");
    std::fflush(file.stream());
    end();
    std::exit(2);
  }
};

class ConvertedFile : public ConvertedFileTest, public ::testing::WithParamInterface<bool> {
 protected:
  ConvertedFile() { CTemporaryFile::use_names_alone(GetParam()); }
  ~ConvertedFile() override { CTemporaryFile::use_names_alone(false); }
};

INSTANTIATE_TEST_SUITE_P(WithAndWithoutNames, ConvertedFile, ::testing::Bool());

TEST_P(ConvertedFile, GetsItsNameWhenItIsComplete) {
  const std::string name = directory.path("out");
  {
    CConvertedFile file;
    ASSERT_TRUE(file.open(name, {}));
    write(file.stream(), "text");
    EXPECT_FALSE(directory.has("out"));
    EXPECT_LE(files().size(), 1U);
    EXPECT_TRUE(file.finish());
  }
  EXPECT_EQ(directory.contents("out"), "text");
  EXPECT_EQ(files(), std::vector<std::string>{"out"});
}

TEST_P(ConvertedFile, LeavesNothingBehindWhenItIsNotComplete) {
  const std::string name = directory.write("out", "former");
  {
    CConvertedFile file;
    ASSERT_TRUE(file.open(name, {}));
    write(file.stream(), "text");
    EXPECT_STREQ(file.fate(), "No file has been written.\n");
  }
  EXPECT_EQ(directory.contents("out"), "former");
  EXPECT_EQ(files(), std::vector<std::string>{"out"});
}

// Each writes a file of its own: the last to end has the name.
TEST_P(ConvertedFile, MayBeWrittenBySeveralAtOnce) {
  const std::string name = directory.path("out");
  std::array<CConvertedFile, 3> runs;
  for (CConvertedFile& file : runs) ASSERT_TRUE(file.open(name, {}));
  for (const char* const piece : {"first ", "second "}) {
    for (std::size_t i = 0; i != runs.size(); ++i) write(runs[i].stream(), piece + std::to_string(i) + " ");
  }
  for (const int i : {2, 0, 1}) {
    EXPECT_TRUE(runs[static_cast<std::size_t>(i)].finish());
    const std::string number = std::to_string(i);
    EXPECT_EQ(directory.contents("out"), "first " + number + " second " + number + " ");
  }
  EXPECT_EQ(files(), std::vector<std::string>{"out"});
}

TEST_P(ConvertedFile, TouchesNoFileBesideItself) {
  const std::string foreign = directory.write("foreign", "precious");
  directory.write("out.unfinished", "precious too");
  fs::create_symlink(foreign, directory.path("other.unfinished"));
  for (const char* const name : {"out", "other"}) {
    CConvertedFile file;
    ASSERT_TRUE(file.open(directory.path(name), {}));
    write(file.stream(), "text");
    EXPECT_TRUE(file.finish());
    EXPECT_EQ(directory.contents(name), "text");
  }
  EXPECT_EQ(directory.contents("foreign"), "precious");
  EXPECT_EQ(directory.contents("out.unfinished"), "precious too");
}

TEST_P(ConvertedFile, HasTheModeOfTheFileThatItReplaces) {
  const mode_t former = umask(022);
  for (const unsigned bits : {0600U, 0640U, 0666U, 0755U}) {
    directory.write("out", "former");
    fs::permissions(directory.path("out"), fs::perms{bits});
    CConvertedFile file;
    ASSERT_TRUE(file.open(directory.path("out"), {}));
    EXPECT_TRUE(file.finish());
    EXPECT_EQ(mode("out"), fs::perms{bits});
  }
  CConvertedFile file;
  ASSERT_TRUE(file.open(directory.path("new"), {}));
  EXPECT_TRUE(file.finish());
  EXPECT_EQ(mode("new"), fs::perms{0644});
  umask(former);
}

TEST_P(ConvertedFile, VanishesWithAProcessThatASignalEnds) {
  const std::string name = directory.path("out");
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGUSR1, SIGALRM, SIGXCPU}) {
    EXPECT_EXIT(open_and(name, [&] { std::raise(signal); }), ::testing::KilledBySignal(signal), "");
    EXPECT_TRUE(files().empty()) << signal;
  }
}

using ConvertedFileWithoutName = ConvertedFileTest;

TEST_F(ConvertedFileWithoutName, VanishesWithAProcessThatIsKilled) {
  CTemporaryFile file;
  ASSERT_TRUE(file.create(directory.path("")));
  if (!files().empty()) GTEST_SKIP() << "no files without a name here";
  EXPECT_EXIT(open_and(directory.path("out"), [] { std::raise(SIGKILL); }), ::testing::KilledBySignal(SIGKILL), "");
  EXPECT_TRUE(files().empty());
}

TEST_P(ConvertedFile, VanishesWithAProcessThatHasNoMemory) {
  const auto run_out_of_memory = [] {
    end_when_memory_runs_out("no memory\n", 9);
    raise_out_of_memory();
  };
  EXPECT_EXIT(open_and(directory.path("out"), run_out_of_memory), ::testing::ExitedWithCode(9), "no memory");
  EXPECT_TRUE(files().empty());
}

TEST_P(ConvertedFile, IsRefusedWhereItCannotBe) {
  fs::create_symlink("b", directory.path("a"));
  fs::create_symlink("a", directory.path("b"));
  for (const std::string& name : {directory.path("a"), directory.path("missing/out")}) {
    CConvertedFile file;
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(file.open(name, {}));
    const std::string message = ::testing::internal::GetCapturedStderr();
    EXPECT_TRUE(message.starts_with("Sorry! Failed to open file\n   \"" + name + "\"\nas output file.\n")) << message;
    EXPECT_TRUE(message.ends_with(".\n")) << message;
  }
  EXPECT_EQ(files().size(), 2U);
}

TEST_P(ConvertedFile, IsNamedWithoutControlCharacters) {
  CConvertedFile file;
  ::testing::internal::CaptureStderr();
  EXPECT_FALSE(file.open(directory.path("missing/\x1b[2Jx"), {}));
  EXPECT_NE(::testing::internal::GetCapturedStderr().find("/\\x1b[2Jx\""), std::string::npos);
}

TEST_P(ConvertedFile, IsWrittenThroughLinksOfAnyNumber) {
  std::filesystem::create_directory(directory.path("there"));
  std::filesystem::create_symlink("there/b", directory.path("a"));
  std::filesystem::create_symlink(directory.path("there/c"), directory.path("there/b"));
  CConvertedFile file;
  ASSERT_TRUE(file.open(directory.path("a"), {}));
  write(file.stream(), "text");
  EXPECT_TRUE(file.finish());
  EXPECT_EQ(directory.contents("there/c"), "text");
  EXPECT_TRUE(std::filesystem::is_symlink(directory.path("a")));
}

TEST_P(ConvertedFile, IsNeverAFileToRead) {
  const std::string results = directory.write("results", "kept");
  const std::string lengths = directory.write("lengths", "kept too");
  std::filesystem::create_hard_link(results, directory.path("link"));
  for (const std::string& name : {results, directory.path("link"), lengths}) {
    CConvertedFile file;
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(file.open(name, {results, lengths}));
    EXPECT_NE(::testing::internal::GetCapturedStderr().find("It is one of the files to read."), std::string::npos);
  }
  EXPECT_EQ(directory.contents("results"), "kept");
  EXPECT_EQ(directory.contents("lengths"), "kept too");
}

TEST_P(ConvertedFile, IsCompressedInBlocksWhereItsNameSaysSo) {
  const std::string name = directory.path("text.gz");
  const std::string text(200000, 'x');
  CConvertedFile file;
  ASSERT_TRUE(file.open(name, {}));
  write(file.stream(), text);
  ASSERT_TRUE(file.finish());
  EXPECT_LT(directory.contents("text.gz").size(), 10000U);

  CByteSource source;
  source.open(name.c_str());
  std::string read(text.size() + 1, ' ');
  ASSERT_EQ(source.read(read.data(), static_cast<std::streamsize>(read.size())),
            static_cast<std::streamsize>(text.size()));
  EXPECT_EQ(read.substr(0, text.size()), text);
  EXPECT_EQ(source.fault, nullptr);  // nor without the block that ends such a file
}

TEST_P(ConvertedFile, NoticesWhenWhatIsCompressedCannotBeWritten) {
  fs::create_symlink("/dev/full", directory.path("full.gz"));
  CConvertedFile file;
  ASSERT_TRUE(file.open(directory.path("full.gz"), {}));
  write(file.stream(), "text\n");
  EXPECT_FALSE(file.finish());
}

TEST_P(ConvertedFile, MayBeANamedPipe) {
  const std::string name = directory.path("pipe");
  ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
  std::FILE* const reader = fopen(name.c_str(), "r+");
  CConvertedFile file;
  ASSERT_TRUE(file.open(name, {}));
  write(file.stream(), "text\n");
  EXPECT_STREQ(file.fate(), "What has been written is not complete.\n");
  EXPECT_TRUE(file.finish());
  char line[16] = "";
  EXPECT_STREQ(std::fgets(line, sizeof line, reader), "text\n");
  std::fclose(reader);
  EXPECT_EQ(files(), std::vector<std::string>{"pipe"});
}

}  // namespace
