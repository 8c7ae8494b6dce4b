// Runs found in a window of comparisons, compared with runs followed symbol by symbol.

#include "match-window.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "support/each-target.h"
#include "support/random-dna.h"
#include "support/test-record.h"

namespace {

// What a test goes through: records of copies of a unit with a few changed symbols, so that runs of every length begin
// on every diagonal.
class CRunRecords {
 public:
  explicit CRunRecords(unsigned seed) : random(seed) {}

  void make_next() {
    const int L = random.number(1, random.coin() ? 12 : 150);
    unit = random.sequence(random.coin() ? "AC" : "ACGT", L);
    text.set(unit.data(), unit.data() + unit.size());
    std::string symbols = repeated(unit, 400 / L + 1).substr(0, static_cast<std::size_t>(random.number(0, 400)));
    const int changes = random.number(0, static_cast<int>(symbols.size()) / 8);
    for (int i = 0; i < changes; ++i) {
      const int place = random.number(0, static_cast<int>(symbols.size()) - 1);
      symbols[static_cast<std::size_t>(place)] = random.one_of(std::string("ACGTN"));
    }
    record.emplace(symbols);
  }

  extension_state random_state() {
    const int place = random.number(0, static_cast<int>(record->symbols.length));
    return {record->at(place), random.number(0, static_cast<int>(unit.size()) - 1), random.number(-5, 50)};
  }

  CRandomDna random;
  std::string unit;
  CUnitText text;
  std::optional<CTestRecord> record;
};

template <typename Direction>
const char* far_end_of(const CTestRecord& record);
template <>
const char* far_end_of<rightwards>(const CTestRecord& record) {
  return record.end();
}
template <>
const char* far_end_of<leftwards>(const CTestRecord& record) {
  return record.begin();
}

// Returns how many symbols matched.
template <typename Direction>
int expect_the_same_runs(CRunRecords& records, int edits) {
  int matched = 0;
  const char* const end = far_end_of<Direction>(*records.record);
  const bool passes_over_Ns = records.random.coin();
  const int L = records.text.length();
  constexpr int deepest = std::numeric_limits<int>::max();
  const int depth = records.random.number(0, 9) == 0 ? deepest : records.random.number(1, 10);
  CMatchWindow<Direction> window(records.text, end, passes_over_Ns, depth);
  extension_state state = records.random_state();
  window_state in_window = window.enter(state);
  for (int i = 0; i < edits; ++i) {
    const int score_before = state.score;
    const bool is_followed = window.run_on(in_window);
    run_on<Direction>(state, records.text, end, passes_over_Ns);
    EXPECT_EQ(in_window.score, state.score);
    EXPECT_EQ(is_followed, state.s != end);
    matched += state.score - score_before;
    if (!is_followed || testing::Test::HasFailure()) return matched;
    // Now and then an extension goes on from here, and the window may move.
    if (records.random.number(0, 3) == 0) in_window = window.enter(state);
    switch (records.random.number(0, 2)) {
      case 0:
        state.s = Direction::step(state.s);
        state.u = Direction::unit_step(state.u, L);
        ++in_window.offset;
        break;
      case 1:
        state.s = Direction::step(state.s);
        ++in_window.offset;
        in_window.diagonal = window.reduced(in_window.diagonal - 1);
        break;
      default:
        state.u = Direction::unit_step(state.u, L);
        in_window.diagonal = window.reduced(in_window.diagonal + 1);
    }
  }
  return matched;
}

TEST(MatchWindow, RunsAsFarAsTheSymbolsMatch) {
  on_each_target([] {
    CRunRecords records(1);
    int matched = 0;
    for (int i = 0; i < 6000 && !testing::Test::HasFailure(); ++i) {
      records.make_next();
      SCOPED_TRACE(records.unit + ' ' + std::string(records.record->begin(), records.record->end()));
      matched += expect_the_same_runs<rightwards>(records, 60);
      matched += expect_the_same_runs<leftwards>(records, 60);
    }
    EXPECT_GT(matched, 100000);
  });
}

// Two states at one position and unit cursor are to be known as such.
TEST(MatchWindow, CountsDiagonalsModuloTheUnitLength) {
  const CTestRecord record(repeated("ACG", 40));
  CUnitText text;
  text.set(record.begin(), record.at(3));
  CMatchWindow<rightwards> window(text, record.end(), false, 5);
  EXPECT_EQ(window.enter({record.at(7), 1, 0}).diagonal, 0);
  EXPECT_EQ(window.reduced(1 + 1), -1);
  EXPECT_EQ(window.reduced(-1 - 1), 1);
  EXPECT_EQ(window.enter({record.at(10), 1, 0}).diagonal, 0);
  EXPECT_EQ(window.enter({record.at(10), 2, 0}).diagonal, 1);
  EXPECT_EQ(window.enter({record.at(10), 0, 0}).diagonal, -1);
}

}  // namespace
