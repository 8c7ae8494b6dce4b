#include "symbol-copy.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CSequence_Mol.h"
#include "support/each-target.h"
#include "support/random-dna.h"
#include "support/temporary-directory.h"

namespace {

const std::string plain_symbols = "ACGTUNacgtun";

bool is_plain(char byte) { return byte != '\0' && plain_symbols.find(byte) != std::string::npos; }

char stored_as(char byte) {
  const auto upper = static_cast<char>(byte & ~0x20);
  return upper == 'U' ? 'T' : upper;
}

// How far the copy may go, a byte at a time.
struct plain_copy {
  std::string symbols;
  std::size_t consumed = 0;
  std::size_t line_ends = 0;

  explicit plain_copy(const std::string& input) {
    for (; consumed < input.size(); ++consumed) {
      const char byte = input[consumed];
      const bool is_joint = byte == '\n' && consumed + 1 < input.size() && is_plain(input[consumed + 1]);
      if (!is_plain(byte) && !is_joint) return;
      if (is_joint) {
        ++line_ends;
      } else {
        symbols += stored_as(byte);
      }
    }
  }
};

// Copies between buffers of exactly the right sizes, so that a sanitizer notices every byte too far. Returns the number
// of bytes left of those that may be copied.
std::size_t check_copy(const std::string& input) {
  const std::vector<char> from(input.begin(), input.end());
  std::vector<char> to(input.size());
  const copied_lines done = copy_symbol_lines(from.data(), from.size(), to.data());
  const plain_copy expected(input);
  EXPECT_EQ(done.consumed, done.stored + done.line_ends);
  EXPECT_LE(done.consumed, expected.consumed);
  EXPECT_LE(done.stored, expected.symbols.size());
  EXPECT_EQ(std::string(to.data(), done.stored), expected.symbols.substr(0, done.stored));
  EXPECT_EQ(plain_copy(input.substr(0, done.consumed) + 'A').line_ends, done.line_ends);
  return expected.consumed - done.consumed;
}

TEST(SymbolCopy, CopiesEveryLengthUpToABlockFromTheEnd) {
  on_each_target([] {
    CRandomDna random(1);
    for (int length = 0; length <= 300; ++length) {
      EXPECT_LT(check_copy(random.sequence(plain_symbols, length)), 64U) << length;
    }
  });
}

TEST(SymbolCopy, StopsAtEveryOtherByteAtEveryOffset) {
  on_each_target([] {
    for (int byte = 0; byte < 256; ++byte) {
      for (int offset = 0; offset <= 70; ++offset) {
        const std::string input =
            std::string(static_cast<std::size_t>(offset), 'g') + static_cast<char>(byte) + std::string(140, 'T');
        const std::size_t left = check_copy(input);
        EXPECT_LT(left, 64U) << byte << ' ' << offset;
        if (!is_plain(static_cast<char>(byte)) && byte != '\n') {
          EXPECT_EQ(left, 0U) << byte << ' ' << offset;
        }
      }
    }
  });
}

TEST(SymbolCopy, DropsLineFeedsOnlyInFrontOfPlainSymbols) {
  on_each_target([] {
    for (int byte = 0; byte < 256; ++byte) {
      for (int width = 0; width <= 70; ++width) {
        const std::string line(static_cast<std::size_t>(width), 'a');
        EXPECT_LT(check_copy(line + '\n' + line + '\n' + static_cast<char>(byte) + std::string(200, 'C')), 64U);
      }
    }
  });
}

TEST(SymbolCopy, CopiesRandomMixturesOfLines) {
  on_each_target([] {
    CRandomDna random(2);
    std::size_t left = 0;
    std::size_t bytes = 0;
    for (int round = 0; round < 4000; ++round) {
      std::string input;
      while (input.size() < 400) {
        input += random.sequence(plain_symbols, random.number(0, 90));
        input += random.number(0, 9) == 0 ? static_cast<char>(random.number(0, 255)) : '\n';
      }
      left += check_copy(input);
      bytes += plain_copy(input).consumed;
    }
    EXPECT_GT(bytes, 500000U);
    EXPECT_LT(left, bytes / 2);
  });
}

TEST(SymbolCopy, FindsTheFirstLineEnd) {
  on_each_target([] {
    for (const char line_end : {'\n', '\r'}) {
      for (int length = 0; length <= 150; ++length) {
        for (int at = 0; at <= length; ++at) {
          std::vector<char> bytes(static_cast<std::size_t>(length), '\v');
          if (at < length) bytes[static_cast<std::size_t>(at)] = line_end;
          if (at + 5 < length) bytes[static_cast<std::size_t>(at) + 5] = '\n';
          const char* const begin = bytes.data();
          EXPECT_EQ(find_line_end(begin, begin + length) - begin, at) << length;
        }
      }
    }
  });
}

TEST(SymbolCopy, TellsLineEndsFromAllOtherBytes) {
  on_each_target([] {
    for (int byte = 0; byte < 256; ++byte) {
      const std::vector<char> bytes(200, static_cast<char>(byte));
      const std::ptrdiff_t expected = byte == '\n' || byte == '\r' ? 0 : 200;
      EXPECT_EQ(find_line_end(bytes.data(), bytes.data() + 200) - bytes.data(), expected) << byte;
    }
  });
}

// ---- the reader around it, against one that fetches byte by byte
// -----------------------------------------------------

struct outcome {
  std::string symbols;
  std::string name;
  int status;
  unsigned line;

  bool operator==(const outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const outcome& o) {
  return out << o.name << ": " << o.symbols << " status " << o.status << " line " << o.line;
}

outcome outcome_of(const CSequence_Mol& record, const CFile& file) {
  return {{record.symbols.buffer, record.symbols.length},
          {record.full_name.buffer, record.full_name.length},
          file.status,
          file.line};
}

std::vector<outcome> read_all(const std::string& path, unsigned block_size) {
  const auto file = std::make_unique<CFile>();
  file->block_size = block_size;
  file->open(path.c_str());
  CSequence_Mol record(1, 'N');
  std::vector<outcome> outcomes;
  while (!file->has_failed()) {
    record.readFastaSequence(*file);
    outcomes.push_back(outcome_of(record, *file));
  }
  return outcomes;
}

// A block of two bytes holds one byte and its predecessor, so nothing is ever taken but byte by byte.
void expect_blocks_do_not_matter(const std::string& path) {
  const std::vector<outcome> expected = read_all(path, 2);
  for (const unsigned block_size : {3U, 7U, 64U, 65U, 66U, 67U, 100U, 129U, 1000U, CFile::buffer_size}) {
    EXPECT_EQ(read_all(path, block_size), expected) << block_size;
  }
}

std::string random_record(CRandomDna& random) {
  static const std::vector<std::string> line_ends{"\n", "\n", "\n", "\r\n", "\r", "\n\n"};
  static const std::string oddities = "RYKMSWBDHVX?ryk-* \t\v\f";
  std::string text = ">" + random.sequence("ab c", random.number(0, 90)) + random.one_of(line_ends);
  for (int lines = random.number(0, 12); lines > 0; --lines) {
    std::string line = random.sequence(plain_symbols, random.number(0, 140));
    for (int i = random.number(-4, 3); i > 0; --i) {
      line.insert(static_cast<std::size_t>(random.number(0, static_cast<int>(line.size()))), 1,
                  random.one_of(oddities));
    }
    text += line + random.one_of(line_ends);
  }
  return text;
}

TEST(SymbolCopy, ReadsRecordsAsAReaderOfSingleBytesDoes) {
  const CTemporaryDirectory directory;
  on_each_target([&] {
    CRandomDna random(3);
    for (int round = 0; round < 150; ++round) {
      std::string text;
      for (int records = random.number(1, 4); records > 0; --records) text += random_record(random);
      if (random.coin()) text.pop_back();
      if (random.number(0, 2) == 0) {
        text[static_cast<std::size_t>(random.number(0, static_cast<int>(text.size()) - 1))] =
            static_cast<char>(random.number(0, 255));
      }
      expect_blocks_do_not_matter(directory.write("in.fa", text));
    }
  });
}

TEST(SymbolCopy, ReportsTheLineOfABadByteBehindManyLines) {
  const CTemporaryDirectory directory;
  on_each_target([&] {
    for (int width = 55; width <= 70; ++width) {
      std::string text = ">r\n";
      for (int i = 0; i < 20; ++i) text += std::string(static_cast<std::size_t>(width), 'A') + "\n";
      const std::vector<outcome> read = read_all(directory.write("in.fa", text + "AC.GT\nAC\n"), CFile::buffer_size);
      ASSERT_EQ(read.size(), 1U);
      EXPECT_EQ(read[0].line, 22U);
      EXPECT_EQ(read[0].status, CFile::fail_state);
      EXPECT_EQ(read[0].symbols, std::string(static_cast<std::size_t>(20 * width), 'A') + "AC");
    }
  });
}

}  // namespace
