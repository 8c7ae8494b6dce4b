// The text that waits on the disk.

#include "CTemporaryText.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/stream-text.h"
#include "support/temporary-directory.h"

namespace {

class TemporaryText : public ::testing::Test {
 protected:
  CTemporaryDirectory directory;
};

TEST_F(TemporaryText, ComesBackWhateverItsLength) {
  for (const std::size_t lines : {0U, 1U, 1000U, 300000U}) {
    CTemporaryText waiting;
    std::string whole;
    for (std::size_t i = 0; i != lines; ++i) {
      const std::string line = std::to_string(i) + '\n';
      waiting.append(line);
      whole += line;
    }
    EXPECT_EQ(text_of([&](std::FILE* out) { EXPECT_TRUE(waiting.copy_to(out)); }), whole);
  }
}

TEST_F(TemporaryText, SaysWhenThereIsNoPlaceForIt) {
  const char* const former = std::getenv("TMPDIR");
  const std::string kept = former != nullptr ? former : "";
  setenv("TMPDIR", directory.path("").c_str(), 1);
  std::filesystem::permissions(directory.path(""), std::filesystem::perms::owner_read);
  if (access(directory.path("").c_str(), W_OK) == 0) setenv("TMPDIR", "/proc/self", 1);  // root may write anywhere
  CTemporaryText waiting;
  waiting.append(std::string(3000000, 'x'));
  waiting.append("y");
  text_of([&](std::FILE* out) { EXPECT_FALSE(waiting.copy_to(out)); });
  EXPECT_NE(waiting.fault().find("TMPDIR"), std::string::npos) << waiting.fault();
  std::filesystem::permissions(directory.path(""), std::filesystem::perms::owner_all);
  former != nullptr ? setenv("TMPDIR", kept.c_str(), 1) : unsetenv("TMPDIR");
}

}  // namespace
