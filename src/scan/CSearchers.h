#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "CFastShortcuts.h"
#include "search-workspace.h"

// What one search at a time works in.
struct searcher {
  Csat_garbagecollector pool;
  CFastShortcuts shortcuts;
  search_workspace workspace{pool, &shortcuts};
};

// The searchers of a program: as many as ever searched at once, lent from task to task for their memory.
class CSearchers {
 public:
  // One that is lent while this lives.
  class CLent {
   public:
    explicit CLent(CSearchers& its_owner) : owner(its_owner), lent(owner.borrow()) {}
    CLent(const CLent&) = delete;
    CLent& operator=(const CLent&) = delete;
    ~CLent() { owner.give_back(std::move(lent)); }
    search_workspace& workspace() { return lent->workspace; }

   private:
    CSearchers& owner;
    std::unique_ptr<searcher> lent;
  };

 private:
  std::mutex guard;
  std::vector<std::unique_ptr<searcher>> idle;

  std::unique_ptr<searcher> borrow() {
    const std::lock_guard locked(guard);
    idle.reserve(idle.size() + 1);
    if (idle.empty()) return std::make_unique<searcher>();
    std::unique_ptr<searcher> last = std::move(idle.back());
    idle.pop_back();
    return last;
  }
  void give_back(std::unique_ptr<searcher> returned) {
    const std::lock_guard locked(guard);
    idle.push_back(std::move(returned));
  }
};
