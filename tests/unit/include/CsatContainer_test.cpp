#include "CsatContainer.h"

#include <gtest/gtest.h>

#include <list>
#include <string>
#include <vector>

#include "support/repeats.h"
#include "support/test-record.h"

namespace {

class Pool : public ::testing::Test {
 protected:
  CTestRecord record{"ACGTACGTACGT"};
  Csat_garbagecollector pool;
};

TEST_F(Pool, AllocatesWhenItIsEmpty) {
  Csat* const sat = pool.get_new(record.at(3), record.at(5));
  EXPECT_EQ(sat->pos_left, record.at(3));
  EXPECT_EQ(sat->unit_begin, record.at(3));
  EXPECT_EQ(sat->fwd_unit_cursor, record.at(3));
  EXPECT_EQ(sat->pos_right, record.at(5));
  EXPECT_EQ(sat->unit_end, record.at(5));
  EXPECT_EQ(sat->bwd_unit_cursor, record.at(4));
  EXPECT_EQ(describe(*sat, record), "[3,5) TA score 0");
  EXPECT_EQ(sat->recursion_depth, 0);
  EXPECT_EQ(sat->ext_ptr, nullptr);
  EXPECT_EQ(sat->missense, nullptr);
  EXPECT_EQ(sat->missense_count, 0U);
  EXPECT_EQ(sat->missense_capacity, 0U);
  pool.give_back(sat);
}

TEST_F(Pool, HandsOutTheRecordReturnedLastAnewWithItsOldEditBuffer) {
  Csat* const other = pool.get_new(record.at(0), record.at(2));
  Csat* const sat = pool.get_new(record.at(0), record.at(2));
  sat->pos_right = record.at(9);
  sat->score = sat->mismatches = sat->insertions = sat->deletions = sat->number_of_Ns = 7;
  sat->recursion_depth = 3;
  for (int i = 0; i < 5; ++i) sat->add_missense(record.at(i), 'M');
  const auto* const buffer = sat->missense;
  pool.give_back(other);
  pool.give_back(sat);

  Csat* const again = pool.get_new(record.at(4), record.at(8));
  EXPECT_EQ(again, sat);
  EXPECT_EQ(describe(*again, record), "[4,8) ACGT score 0");
  EXPECT_EQ(again->recursion_depth, 0);
  EXPECT_EQ(again->missense, buffer);
  EXPECT_EQ(again->missense_capacity, 8U);
  EXPECT_EQ(again->missense_count, 0U);
  EXPECT_EQ(pool.records, std::list<Csat*>{other});
  pool.give_back(again);
}

class CCountedExtension : public Csat_extension {
 public:
  explicit CCountedExtension(int& counter) : alive(counter) { ++alive; }
  ~CCountedExtension() override { --alive; }
  CCountedExtension(const CCountedExtension&) = delete;
  CCountedExtension& operator=(const CCountedExtension&) = delete;

 private:
  int& alive;
};

TEST_F(Pool, ReleasesTheExtensionOfARecordHandedOutAgain) {
  int alive = 0;
  Csat* const sat = pool.get_new(record.at(0), record.at(2));
  sat->ext_ptr = new CCountedExtension(alive);
  pool.give_back(sat);
  EXPECT_EQ(alive, 1);
  EXPECT_EQ(pool.get_new(record.at(0), record.at(2)), sat);
  EXPECT_EQ(alive, 0);
  EXPECT_EQ(sat->ext_ptr, nullptr);
  pool.give_back(sat);
}

TEST_F(Pool, GetsTheRecordsOfADestroyedListAtItsEndInOrder) {
  Csat* const pooled = pool.get_new(record.at(0), record.at(2));
  std::vector<Csat*> expected{pooled};
  {
    CsatContainer list(pool);
    for (int i = 0; i < 3; ++i) {
      list.records.push_back(pool.get_new(record.at(i), record.at(i + 2)));
      expected.push_back(list.records.back());
    }
    pool.give_back(pooled);
  }
  EXPECT_EQ(std::vector<Csat*>(pool.records.begin(), pool.records.end()), expected);
}

class SortedLists : public Pool {
 protected:
  CsatContainer list{pool};

  Csat* add(int left, int right, int unit_length) {
    Csat* const sat = pool.get_new(record.at(left), record.at(left + unit_length));
    sat->pos_right = record.at(right);
    list.records.push_back(sat);
    return sat;
  }
};

TEST_F(SortedLists, AreOrderedByStartAndThenByEnd) {
  add(4, 8, 2);
  add(0, 9, 3);
  add(4, 6, 2);
  add(0, 8, 4);
  list.sort();
  EXPECT_EQ(describe(list.records, record),
            (texts{"[0,8) ACGT score 0", "[0,9) ACG score 0", "[4,6) AC score 0", "[4,8) AC score 0"}));
}

TEST_F(SortedLists, KeepTheOrderOfRepeatsWithTheSameEndsAndDifferentUnits) {
  add(4, 8, 3);
  add(4, 8, 2);
  add(0, 8, 4);
  add(4, 8, 4);
  list.sort();
  EXPECT_EQ(describe(list.records, record),
            (texts{"[0,8) ACGT score 0", "[4,8) ACG score 0", "[4,8) AC score 0", "[4,8) ACGT score 0"}));
}

TEST_F(SortedLists, TakeARecordFromAnotherListAsTheirLast) {
  CsatContainer source(pool);
  Csat* const first = add(0, 2, 2);
  Csat* const moved = pool.get_new(record.at(1), record.at(3));
  source.records.push_back(moved);
  list.take_last(source, source.records.begin());
  EXPECT_TRUE(source.records.empty());
  EXPECT_EQ(list.records, (std::list<Csat*>{first, moved}));
}

class Spare : public ::testing::Test {
 protected:
  CTestRecord record{"ACGTACGTACGT"};
};

TEST_F(Spare, IsTheSameRecordForOneCandidateAfterTheOther) {
  CSpareSat spare(sat_alloc);
  Csat& first = spare.take(record.at(0), record.at(2));
  first.score = 9;
  first.add_missense(record.at(0), 'M');
  Csat& second = spare.take(record.at(1), record.at(3));
  EXPECT_EQ(&first, &second);
  EXPECT_EQ(describe(second, record), "[1,3) CG score 0");
  EXPECT_EQ(second.missense_count, 0U);
}

TEST_F(Spare, IsAnotherRecordAfterOneWasKept) {
  CsatContainer kept(sat_alloc);
  CSpareSat spare(sat_alloc);
  Csat* const first = &spare.take(record.at(0), record.at(2));
  spare.move_to(kept);
  EXPECT_NE(&spare.take(record.at(1), record.at(3)), first);
  EXPECT_EQ(describe(kept.records, record), texts{"[0,2) AC score 0"});
}

TEST_F(Spare, GoesBackToThePoolInTheEnd) {
  Csat* taken = nullptr;
  {
    CSpareSat spare(sat_alloc);
    taken = &spare.take(record.at(0), record.at(2));
  }
  ASSERT_FALSE(sat_alloc.records.empty());
  EXPECT_EQ(sat_alloc.records.back(), taken);
}

TEST_F(Spare, ThatWasNeverTakenLeavesThePoolAlone) {
  const std::list<Csat*> before = sat_alloc.records;
  { const CSpareSat spare(sat_alloc); }
  EXPECT_EQ(sat_alloc.records, before);
}

}  // namespace
