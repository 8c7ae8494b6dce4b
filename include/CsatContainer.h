#pragma once

#include <list>

#include "Csat.h"

// The lists that own repeat records, and the pool that records come from.
//
// A record is in exactly one place: a list, the pool, or with a search as its spare. Once allocated it is recycled,
// last in first out, until the process ends. Out of memory is std::bad_alloc.

// A list that deletes the records it still holds.
class CBasicSatContainer {
 public:
  std::list<Csat*> records;

  CBasicSatContainer() = default;
  CBasicSatContainer(const CBasicSatContainer&) = delete;
  CBasicSatContainer& operator=(const CBasicSatContainer&) = delete;
  ~CBasicSatContainer() {
    for (Csat* sat : records) delete sat;
  }
};

// The pool of records that are free for reuse.
class Csat_garbagecollector : public CBasicSatContainer {
 public:
  // A record that is the single copy of the unit [unit_begin, unit_end): the one returned last, or a new one.
  Csat* get_new(const char* unit_begin, const char* unit_end) {
    Csat* sat = nullptr;
    if (records.empty()) {
      sat = new Csat;
    } else {
      sat = records.back();
      records.pop_back();
    }
    sat->reset(unit_begin, unit_end);
    return sat;
  }

  // Takes a record back.
  void give_back(Csat* sat) { records.push_back(sat); }
};

// The one pool of the process. It is left to the system at the end: to free its records one by one would take as long
// as to find them.
extern Csat_garbagecollector& sat_alloc;

// A list that hands its records back to their pool, in order.
class CsatContainer : public CBasicSatContainer {
 public:
  Csat_garbagecollector* pool;

  explicit CsatContainer(Csat_garbagecollector& its_pool) : pool(&its_pool) {}
  ~CsatContainer() { pool->records.splice(pool->records.end(), records); }

  // Stable: records with the same ends stay in their order.
  void sort();

  // Takes over the record at `node` of another list, as the last one here. Allocates nothing.
  void take_last(CBasicSatContainer& from, std::list<Csat*>::iterator node) {
    records.splice(records.end(), from.records, node);
  }
};

// The one record that a search keeps at hand between candidates; a rejected candidate's record serves the next one.
class CSpareSat {
 public:
  // The record at hand, or one from the pool, made the single copy of the unit [unit_begin, unit_end).
  Csat& take(const char* unit_begin, const char* unit_end) {
    if (holder.records.empty()) holder.records.push_back(nullptr);
    Csat*& sat = holder.records.front();
    if (sat == nullptr) {
      sat = holder.pool->get_new(unit_begin, unit_end);
    } else {
      sat->reset(unit_begin, unit_end);
    }
    return *sat;
  }

  // Hands the record taken last to a list that keeps it.
  void move_to(CsatContainer& list) { list.take_last(holder, holder.records.begin()); }

  explicit CSpareSat(Csat_garbagecollector& pool) : holder(pool) {}
  CSpareSat(const CSpareSat&) = delete;
  CSpareSat& operator=(const CSpareSat&) = delete;
  ~CSpareSat() { holder.records.remove(nullptr); }

 private:
  CsatContainer holder;
};
