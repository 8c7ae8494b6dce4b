#include "scan-output.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "support/temporary-directory.h"

namespace {

class WriteIndex : public ::testing::Test {
 protected:
  CTemporaryDirectory directory;
  const std::string name = directory.path("a.bed.gz");

  bool has(const std::string& ending) const { return std::filesystem::file_size(name + ending) > 0; }

  // Beside indexes of both kinds, of a former file.
  bool write_for(unsigned longest_sequence) const {
    CConvertedFile file;
    if (!open_output(file, name, {}, true, 1)) return false;
    std::fprintf(file.stream(), "a\t%u\t%u\tAC\n", longest_sequence - 20, longest_sequence);
    for (const char* const ending : {".tbi", ".csi"}) std::ofstream(name + ending) << "";
    return finish_output(file) && write_index(name, true, longest_sequence);
  }
};

// A .tbi cannot hold such a place.
TEST_F(WriteIndex, IsACsiBeyond512Megabases) {
  ASSERT_TRUE(write_for((1U << 29) + 1));
  EXPECT_TRUE(has(".csi"));
  EXPECT_FALSE(std::filesystem::exists(name + ".tbi"));
}

TEST_F(WriteIndex, IsATbiUpToThere) {
  ASSERT_TRUE(write_for(1U << 29));
  EXPECT_TRUE(has(".tbi"));
  EXPECT_FALSE(std::filesystem::exists(name + ".csi"));
}

}  // namespace
