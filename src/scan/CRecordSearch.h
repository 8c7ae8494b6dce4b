#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "CSearchers.h"
#include "repeat-run.h"
#include "search-settings.h"

// The search of one record by all threads: in stretches at once, joined where that is proved right (repeat-run.h).
//
// The record is cut into stretches, and a run searches each. Around each border a further run, the bridge, is joined to
// the runs on both sides. Where there is no cut, as inside a repeat that is longer than the bridge, the bridge is made
// twice as long, up to half of both stretches; after that the two stretches are searched again as one. In extend-exact
// mode the seeds are found so; each is then extended by itself.
//
// Costs one search of the record, and of each bridge; little is not done by all threads.
class CRecordSearch {
 public:
  struct plan {
    const search_settings& settings;
    int mode = 0;                           // results-modes.h
    std::vector<search_stretch> stretches;  // from end to end
    unsigned least_overlap = 0;             // of a bridge on each side; 0: as it is best
  };

  // All must outlive the search. `done` is told of symbols as they have been searched, from any thread.
  CRecordSearch(plan its_plan, CSearchers& its_searchers, std::function<void(unsigned)> its_done = {})
      : its(std::move(its_plan)), searchers(its_searchers), done(std::move(its_done)) {}

  // All repeats, overlapping ones included, in the order of results. The caller owns them.
  repeat_list search(CSequence_Mol& record);

 private:
  // Two runs joined by a third one.
  struct joint {
    CRepeatRun bridge;
    const char* first = nullptr;  // cuts
    const char* second = nullptr;
  };

  const plan its;
  CSearchers& searchers;
  std::function<void(unsigned)> done;
  CSequence_Mol* record = nullptr;

  CRepeatRun run_over(const search_stretch& starts);
  std::vector<repeat_list> search_stretches();
  std::optional<joint> join(const CRepeatRun& left, const CRepeatRun& right);
  std::vector<repeat_list> joined(std::vector<CRepeatRun>& runs, std::vector<std::optional<joint>>& joints) const;
  void extend(repeat_list& seeds);
};
