#include "CByteSource.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "support/gzip-text.h"
#include "support/random-dna.h"
#include "support/temporary-directory.h"

namespace {

using namespace std::string_literals;

const std::string fasta = ">s1 one\nACACACACGTTT\n>s2\nNNNNGATTACA\n";

constexpr const char* cut_off = "It is compressed and its end is missing";
constexpr const char* without_last_blocks = "It is compressed in blocks and its last ones are missing";
constexpr const char* followed = "It is compressed, but other bytes follow the compressed ones";

// What came out of a file.
struct outcome {
  std::string text;
  std::string fault;  // empty where there is none
  bool is_compressed = false;
};

class CByteSourceTest : public ::testing::Test {
 protected:
  CTemporaryDirectory directory;

  static outcome rest_of(CByteSource& source, std::streamsize read_size) {
    outcome found;
    std::vector<char> block(static_cast<std::size_t>(read_size));
    for (;;) {
      const std::streamsize count = source.read(block.data(), read_size);
      if (count == 0) break;
      if (count < read_size) {
        EXPECT_EQ(source.read(block.data() + count, read_size - count), 0);
      }
      found.text.append(block.data(), static_cast<std::size_t>(count));
    }
    EXPECT_EQ(source.read(block.data(), read_size), 0);
    if (source.fault != nullptr) found.fault = source.fault;
    found.is_compressed = source.is_compressed();
    return found;
  }

  outcome read(const std::string& file, std::streamsize read_size = 1000) const {
    CByteSource source;
    source.open(directory.write("input", file).c_str());
    EXPECT_FALSE(source.fail());
    return rest_of(source, read_size);
  }

  void expect_fault(const std::string& file, const std::string& text, const std::string& fault) const {
    for (const std::streamsize size : {2, 3, 1000}) {
      const outcome found = read(file, size);
      EXPECT_EQ(found.text, text);
      EXPECT_EQ(found.fault, fault);
    }
  }
};

TEST_F(CByteSourceTest, AMissingFileIsNotOpened) {
  CByteSource source;
  source.open(directory.path("missing").c_str());
  EXPECT_TRUE(source.fail());
  EXPECT_FALSE(source.is_open());
}

TEST_F(CByteSourceTest, PlainBytesComeOutAsTheyAre) {
  for (const std::string& text : {""s, "A"s, "\x1f"s, "\x1f\x8a"s, "\x8b\x1f"s, "\0\0\0"s, "A\x1f\x8b\x08"s, fasta}) {
    for (const std::streamsize size : {2, 3, 10, 1000}) {
      const outcome found = read(text, size);
      EXPECT_EQ(found.text, text);
      EXPECT_EQ(found.fault, "");
      EXPECT_FALSE(found.is_compressed);
    }
  }
}

TEST_F(CByteSourceTest, ADirectoryReadsAsAnEmptyFile) {
  CByteSource source;
  source.open(directory.path("").c_str());
  const outcome found = rest_of(source, 100);
  EXPECT_EQ(found.text, "");
  EXPECT_EQ(found.fault, "");
}

struct layout {
  std::string name;
  std::string file;
  std::string text;
};

std::vector<layout> layouts() {
  const std::string other_field = "XY\3\0abc"s;
  const std::string block_field = "BC\2\0\0\0"s;
  const gzip_head all_fields{.extra = other_field, .name = "a.fa", .comment = "words", .has_checksum = true};
  const std::string long_text = CRandomDna(1).sequence("ACGT\n", 5000);
  std::string many_members;
  std::string many_texts;
  for (int i = 0; i < 40; ++i) {
    const std::string text = CRandomDna(static_cast<unsigned>(i)).sequence("ACGT", i % 7);
    many_members += gzip_member(text);
    many_texts += text;
  }
  return {
      {"Compressed", gzip_member(fasta), fasta},
      {"Stored", gzip_member(fasta, {}, 0), fasta},
      {"Long", gzip_member(long_text), long_text},
      {"RunOfOneByte", gzip_member(std::string(100000, 'A')), std::string(100000, 'A')},
      {"WithAllFieldsInItsHead", gzip_member(fasta, all_fields), fasta},
      {"WithALongExtraField",
       gzip_member(fasta, {.extra = "XY\xfb\xff" + std::string(65531, 'e'), .name = "", .comment = ""}), fasta},
      {"EmptyText", gzip_member(""), ""},
      {"TwoMembers", gzip_member(fasta) + gzip_member("ACGT\n"), fasta + "ACGT\n"},
      {"EmptyMembersAround", gzip_member("") + gzip_member(fasta) + gzip_member("") + gzip_member(""), fasta},
      {"ManyMembers", many_members, many_texts},
      {"ZerosBehind", gzip_member(fasta) + "\0"s, fasta},
      {"ManyZerosBehind", gzip_member(fasta) + std::string(5000, '\0'), fasta},
      {"Blocks", bgzip_file(fasta, 7), fasta},
      {"OneBlock", bgzip_file(fasta, 1000), fasta},
      {"BlocksOfAnEmptyText", bgzip_file("", 7), ""},
      {"BlocksAndZerosBehind", bgzip_file(fasta, 7) + std::string(512, '\0'), fasta},
      {"BlockedFilesBehindEachOther", bgzip_file(fasta, 7) + bgzip_file(fasta, 9), fasta + fasta},
      {"BlockedAndOther", bgzip_file(fasta, 7) + gzip_member(fasta), fasta + fasta},
      {"OtherAndBlocked", gzip_member(fasta) + bgzip_file(fasta, 7), fasta + fasta},
      {"BlockFieldBehindAnother",
       gzip_member(fasta, {.extra = other_field + block_field, .name = "", .comment = ""}) + bgzip_block(""), fasta},
      {"ExtraFieldThatIsNoRowOfSubfields", gzip_member(fasta, {.extra = "BCB", .name = "", .comment = ""}), fasta},
  };
}

class ByteSourceLayout : public CByteSourceTest, public ::testing::WithParamInterface<layout> {};

TEST_P(ByteSourceLayout, GivesTheTextWhateverTheBlocks) {
  for (const std::streamsize size : {2, 3, 4, 5, 7, 19, 64, 1000, 1000000}) {
    const outcome found = read(GetParam().file, size);
    EXPECT_EQ(found.text, GetParam().text) << "in blocks of " << size;
    EXPECT_EQ(found.fault, "");
    EXPECT_TRUE(found.is_compressed);
  }
}

// Every read of the system gives one byte, so that also the first two come apart.
TEST_P(ByteSourceLayout, MayComeByteByByteFromAPipe) {
  const std::string name = directory.path("pipe");
  ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
  std::thread writer([&] {
    const int pipe = open(name.c_str(), O_WRONLY | O_CLOEXEC);
    for (const char byte : GetParam().file) {
      if (write(pipe, &byte, 1) != 1) break;
      std::this_thread::yield();
    }
    close(pipe);
  });
  CByteSource source;
  source.open(name.c_str());
  const outcome found = rest_of(source, 1000);
  writer.join();
  EXPECT_EQ(found.text, GetParam().text);
  EXPECT_EQ(found.fault, "");
}

std::string layout_name(const ::testing::TestParamInfo<layout>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(OfEveryKind, ByteSourceLayout, ::testing::ValuesIn(layouts()), layout_name);

// Small files of every kind whose end can be told.
std::vector<std::string> small_files() {
  const gzip_head all_fields{.extra = "XY\3\0abc"s, .name = "a.fa", .comment = "words", .has_checksum = true};
  return {gzip_member(fasta), gzip_member(fasta, {}, 0), gzip_member(fasta, all_fields), bgzip_file(fasta, 12)};
}

TEST_F(CByteSourceTest, AFileCutOffAnywhereIsInTrouble) {
  for (const std::string& file : small_files()) {
    for (std::size_t length = 2; length < file.size(); ++length) {
      for (const std::streamsize size : {2, 1000}) {
        const outcome found = read(file.substr(0, length), size);
        EXPECT_TRUE(found.fault == cut_off || found.fault == without_last_blocks) << length << found.fault;
        EXPECT_TRUE(fasta.starts_with(found.text));
      }
    }
  }
}

TEST_F(CByteSourceTest, BlocksWithoutTheEmptyOneBehindThemAreInTrouble) {
  const std::string blocks = bgzip_block("AC") + bgzip_block("GT");
  expect_fault(blocks, "ACGT", without_last_blocks);
  expect_fault(blocks + std::string(10, '\0'), "ACGT", without_last_blocks);
  expect_fault(blocks + gzip_member("AA"), "ACGTAA", without_last_blocks);
  expect_fault(gzip_member("AA") + blocks, "AAACGT", without_last_blocks);
  expect_fault(blocks + gzip_member(""), "ACGT", without_last_blocks);
}

TEST_F(CByteSourceTest, OtherBytesBehindTheLastMemberAreTrouble) {
  for (const std::string& member : {gzip_member(fasta), bgzip_file(fasta, 7)}) {
    for (const std::string& end : {"A"s, "\n"s, "\0A"s, "\0\0\x1f"s, std::string(3000, '\0') + ">", "\x8b\x1f"s}) {
      expect_fault(member + end, fasta, followed);
    }
    expect_fault(member + "\x1f", fasta, cut_off);
    expect_fault(member + "\x1f\x8b", fasta, cut_off);
    EXPECT_NE(read(member + "\x1f\x1f").fault, "");
  }
}

TEST_F(CByteSourceTest, NoFlippedBitChangesTheTextUnnoticed) {
  unsigned noticed = 0;
  for (const std::string& file : small_files()) {
    for (std::size_t bit = 0; bit < 8 * file.size(); ++bit) {
      std::string flipped = file;
      flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
      const outcome found = read(flipped, bit % 2 == 0 ? 1000 : 2);
      if (bit < 16) {
        EXPECT_FALSE(found.is_compressed);
        EXPECT_EQ(found.text, flipped);
      } else if (found.fault.empty()) {
        EXPECT_EQ(found.text, fasta) << bit;
      } else {
        ++noticed;
      }
    }
  }
  EXPECT_GT(noticed, 1000U);
}

TEST_F(CByteSourceTest, CorruptDataAreNamed) {
  const std::string file = gzip_member(fasta);
  const auto with_byte_changed = [&](std::size_t place) {
    std::string changed = file;
    changed[place] = static_cast<char>(changed[place] ^ 1);
    return read(changed).fault;
  };
  const auto corrupt = [](const std::string& how) {
    return "It is compressed and corrupt (" + how + "), perhaps in front of this line too";
  };
  EXPECT_EQ(with_byte_changed(2), corrupt("unknown compression method"));
  EXPECT_EQ(with_byte_changed(file.size() - 8), corrupt("incorrect data check"));
  EXPECT_EQ(with_byte_changed(file.size() - 1), corrupt("incorrect length check"));
}

TEST_F(CByteSourceTest, ACompressedFileThatBecameShorterIsInTrouble) {
  std::string text;
  CRandomDna random(1);
  while (text.size() < 40000) text += static_cast<char>(random.number(0, 255));
  const std::string first = gzip_member(text, {}, 0);
  CByteSource source;
  source.open(directory.write("input", first + gzip_member("ACGT")).c_str());
  std::vector<char> block(20000);
  EXPECT_EQ(source.read(block.data(), 20000), 20000);
  std::filesystem::resize_file(directory.path("input"), first.size());  // all that is left is intact
  const outcome found = rest_of(source, 20000);
  EXPECT_EQ(found.text, text.substr(20000));
  EXPECT_EQ(found.fault, "It has become shorter while it was read");
}

TEST_F(CByteSourceTest, AForeignFormatIsKnownInPlainAndInCompressedFiles) {
  const std::string archive = "PK\3\4 and more";
  CByteSource source;
  for (const std::string& contents : {archive, gzip_member(archive)}) {
    source.open(directory.write("input", contents).c_str());
    EXPECT_EQ(source.foreign_kind(), nullptr);
    EXPECT_EQ(rest_of(source, 1000).text, archive);
    ASSERT_NE(source.foreign_kind(), nullptr);
    EXPECT_TRUE(std::string(source.foreign_kind()).starts_with("It is a zip archive."));
    source.close();
  }
  source.open(directory.write("input", fasta).c_str());
  rest_of(source, 1000);
  EXPECT_EQ(source.foreign_kind(), nullptr);
}

TEST_F(CByteSourceTest, MayBeOpenedAgain) {
  CByteSource source;
  for (int round = 0; round < 2; ++round) {
    source.open(directory.write("broken", gzip_member(fasta) + "A").c_str());
    EXPECT_EQ(rest_of(source, 9).fault, followed);
    source.close();
    source.open(directory.write("plain", "ACGT").c_str());
    EXPECT_FALSE(source.is_compressed());
    const outcome found = rest_of(source, 100);
    EXPECT_EQ(found.text, "ACGT");
    EXPECT_EQ(found.fault, "");
    source.close();
  }
}

}  // namespace
