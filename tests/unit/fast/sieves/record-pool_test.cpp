// Records tested together: each keeps what it must, whatever is announced, and programs run once for all of them.

#include "record-pool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <vector>

#include "support/candidate-sequences.h"
#include "support/default-parameters.h"
#include "support/filter-check.h"

namespace {

// In memory of its own size, so that a sanitizer notices reading beyond it.
struct exact_record {
  std::vector<char> symbols;
  explicit exact_record(const std::string& text) : symbols(text.begin(), text.end()) {}
  symbol_range range() const { return {symbols.data(), symbols.data() + symbols.size()}; }
};

CPositionSet ask(CRecordPool& pool, const alignment_kernel& kernel, const std::string& symbols) {
  const exact_record record(symbols);
  CPositionSet kept(symbols.size());
  pool.place(kernel, record.range(), kept);
  return kept;
}

// The records in FASTA, with lines of `width` symbols.
std::string fasta(const std::vector<std::string>& records, std::size_t width, const char* line_end = "\n") {
  std::string text;
  for (const std::string& symbols : records) {
    text += std::string(">a record") + line_end;
    for (std::size_t i = 0; i < symbols.size(); i += width) text += symbols.substr(i, width) + line_end;
  }
  return text;
}

class RecordPool : public ParameterTest {
 protected:
  CRandomDna random{1};
  CCandidateSequences sequences{random};

  std::vector<std::string> some_records(std::size_t count, int L, int T) {
    std::vector<std::string> records(count);
    for (std::string& symbols : records) {
      const int length = random.number(0, 9) == 0 ? random.number(L + 1, 1500) : random.number(L + 1, 200);
      symbols = sequences.make(length, L, T);
    }
    return records;
  }
};

TEST_F(RecordPool, KeepsWhatCanBeAcceptedInEachRecord) {
  filter_counts counts;
  for (int round = 0; round < 100 && !HasFailure(); ++round) {
    const alignment_kernel& kernel = random.one_of(std::vector(alignment_kernels().begin(), alignment_kernels().end()));
    const unsigned L = kernel.bound.L;
    candidate_settings settings;
    settings.longest = L;
    settings.put_in_force();
    const std::vector<std::string> records = some_records(20, static_cast<int>(L), kernel.bound.T);
    const auto first = static_cast<std::size_t>(random.number(0, 10));
    const auto then = static_cast<std::size_t>(random.number(static_cast<int>(first), 19));
    const std::string text = fasta({records.begin() + static_cast<std::ptrdiff_t>(first) + 1, records.end()}, 60);
    std::string symbols = records[then];
    if (random.coin()) symbols[symbols.size() / 2] = 'C';  // not what the text says
    const auto keep = [&](const filter_case& c) {
      CRecordPool pool;
      pool.announce(text);
      ask(pool, kernel, records[first]);
      return ask(pool, kernel, c.symbols);
    };
    check_filter({settings, L, symbols}, yardstick::bound_and_extension, keep, counts);
  }
  EXPECT_GT(counts.wanted, 500U * tested_targets().size());
  EXPECT_LT(counts.share_of_unwanted_kept(), 0.1);
}

int runs = 0;
void run_and_count(const CBitPlanes& planes, CPositionSet& kept) {
  ++runs;
  alignment_kernels()[3].run(planes, kept);
}

class CountedPool : public RecordPool {
 protected:
  alignment_kernel kernel = alignment_kernels()[3];
  CRecordPool pool;
  std::vector<std::string> records;

  CountedPool() {
    runs = 0;
    kernel.run = run_and_count;
    for (int i = 0; i < 50; ++i) records.push_back(random.sequence("ACGT", random.number(5, 200)));
  }

  // How often the program runs for all of the records, where this text follows the first.
  int runs_for_all(const std::string& text_after_first) {
    pool.announce(text_after_first);
    for (const std::string& symbols : records) ask(pool, kernel, symbols);
    return runs;
  }
  // With the header of one more, as the last bytes at hand are left alone.
  std::string text_after_first(const char* line_end = "\n") const {
    return fasta({records.begin() + 1, records.end()}, 70, line_end) + '>' + std::string(100, 'x');
  }
};

TEST_F(CountedPool, RunsOnceForAllThatFollow) { EXPECT_EQ(runs_for_all(text_after_first()), 1); }

TEST_F(CountedPool, ReadsLowerCaseAndTheLineEndsOfOtherSystems) {
  std::string text = text_after_first("\r\n");
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  EXPECT_EQ(runs_for_all(text), 1);
}

TEST_F(CountedPool, LaysOutAnewWhereTheTextTellsNothing) { EXPECT_EQ(runs_for_all(""), 50); }

TEST_F(CountedPool, GoesByTheSymbolsOfTheRecord) {
  std::string text = text_after_first();
  const std::string last = records.back();
  records.back().back() = records.back().back() == 'A' ? 'C' : 'A';
  EXPECT_EQ(runs_for_all(text), 2);
}

TEST_F(CountedPool, LeavesOutRecordsThatAskForNothing) {
  const std::string text = text_after_first();
  records.erase(records.begin() + 10, records.begin() + 20);
  EXPECT_EQ(runs_for_all(text), 1);
}

// Whatever stands in the text and wherever it ends, nothing beyond it is read.
TEST_F(CountedPool, StopsWhereTheTextIsNoRecord) {
  const std::string whole = text_after_first();
  for (const char* const odd : {"R", "#", ">", "\n\n", "\t", ";", "\r", "-"}) {
    for (std::size_t at = 0; at < 400; at += 7) {
      std::string text = whole;
      text.insert(at, odd);
      const exact_record exact(text.substr(0, at + 100));
      pool.announce({exact.symbols.data(), exact.symbols.size()});
      CRecordPool alone;
      for (std::size_t i = 0; i < 5; ++i) {
        const exact_record record(records[i]);
        const CPositionSet together = ask(pool, kernel, records[i]);
        const CPositionSet by_itself = ask(alone, kernel, records[i]);
        // Only near the end may a neighbour make a difference.
        for (std::size_t p = by_itself.next(0); p + 50 < by_itself.end(); p = by_itself.next(p + 1)) {
          ASSERT_TRUE(p < 50 || together.has(p));
        }
      }
    }
  }
}

TEST_F(CountedPool, TakesNoLongRecord) {
  records[10] = random.sequence("ACGT", static_cast<int>(longest_short_record) + 1);
  const std::string text = text_after_first();
  records.erase(records.begin() + 10, records.end());
  EXPECT_EQ(runs_for_all(text), 1);
  const std::string next = random.sequence("ACGT", 100);
  const std::string long_record = fasta({random.sequence("ACGT", 5000)}, 80);
  pool.announce(long_record);
  ask(pool, kernel, next);
  EXPECT_EQ(runs, 2);
}

}  // namespace
