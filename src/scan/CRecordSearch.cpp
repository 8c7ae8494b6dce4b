#include "CRecordSearch.h"

#include <tbb/parallel_for.h>

#include <algorithm>
#include <iterator>

#include "for-each-in-turn.h"
#include "results-modes.h"

namespace {

unsigned length_of(const search_stretch& stretch) { return stretch.end - stretch.begin; }

}  // namespace

repeat_list CRecordSearch::search(CSequence_Mol& its_record) {
  record = &its_record;
  std::vector<repeat_list> pieces = search_stretches();
  const bool are_seeds = its.mode == search_mode_extend_exact;
  if (are_seeds) tbb::parallel_for(std::size_t{0}, pieces.size(), [&](std::size_t i) { extend(pieces[i]); });
  repeat_list all;
  for (const repeat_list& piece : pieces) append_in_order(all, piece, are_seeds ? lessThan_sat : is_found_before);
  return all;
}

CRepeatRun CRecordSearch::run_over(const search_stretch& starts) {
  CSearchers::CLent lent(searchers);
  CSearchController controller(1, *record, its.settings, lent.workspace(), {}, starts);
  if (its.mode == search_mode_imperfect) {
    controller.complete_imperfect_search(nullptr);
    return {starts, controller.work_list};
  }
  if (its.mode == search_mode_exact) {
    controller.exact_search_2();
  } else {
    controller.find_seeds();
  }
  return {starts, controller.result_list};
}

std::vector<repeat_list> CRecordSearch::search_stretches() {
  const std::vector<search_stretch>& parts = its.stretches;
  std::vector<CRepeatRun> runs(parts.size());
  for_each_in_turn(parts.size(), [&](std::size_t i) {
    runs[i] = run_over(parts[i]);
    if (done) done(length_of(parts[i]));
  });
  for (;;) {
    std::vector<std::optional<joint>> joints(runs.size() - 1);
    tbb::parallel_for(std::size_t{0}, joints.size(), [&](std::size_t i) { joints[i] = join(runs[i], runs[i + 1]); });
    if (std::ranges::all_of(joints, [](const auto& one) { return one.has_value(); })) return joined(runs, joints);
    std::vector<CRepeatRun> fewer;
    std::vector<std::size_t> again;
    for (std::size_t i = 0; i < runs.size(); ++i) {
      if (i == 0 || joints[i - 1]) {
        fewer.push_back(std::move(runs[i]));
        continue;
      }
      fewer.back().starts.end = runs[i].starts.end;
      if (again.empty() || again.back() != fewer.size() - 1) again.push_back(fewer.size() - 1);
    }
    runs = std::move(fewer);
    tbb::parallel_for(std::size_t{0}, again.size(),
                      [&](std::size_t i) { runs[again[i]] = run_over(runs[again[i]].starts); });
  }
}

std::optional<CRecordSearch::joint> CRecordSearch::join(const CRepeatRun& left, const CRepeatRun& right) {
  const unsigned border = right.starts.begin;
  const unsigned longest = its.settings.max_unit_length;
  const unsigned most = std::min(length_of(left.starts), length_of(right.starts)) / 2;
  const char* const at = record->symbols.buffer;
  for (unsigned overlap = its.least_overlap != 0 ? its.least_overlap : 512 + 2 * longest; overlap <= most;
       overlap *= 2) {
    joint tried;
    tried.bridge = run_over({border - overlap, border + overlap});
    tried.first = find_cut(left, tried.bridge, at + (border - overlap), at + border, longest);
    tried.second = find_cut(tried.bridge, right, at + border, at + (border + overlap), longest);
    if (tried.first != nullptr && tried.second != nullptr) return tried;
  }
  return std::nullopt;
}

// The repeats of the search, piece by piece.
std::vector<repeat_list> CRecordSearch::joined(std::vector<CRepeatRun>& runs,
                                               std::vector<std::optional<joint>>& joints) const {
  const char* const end = record->symbols.buffer + record->symbols.length;
  std::vector<repeat_list> pieces(runs.size() + joints.size());
  tbb::parallel_for(std::size_t{0}, runs.size(), [&](std::size_t i) {
    const char* const from = i == 0 ? record->symbols.buffer : joints[i - 1]->second;
    const char* const to = i == joints.size() ? end : joints[i]->first;
    pieces[2 * i] = runs[i].take(from, to);
    if (i != joints.size()) pieces[2 * i + 1] = joints[i]->bridge.take(joints[i]->first, joints[i]->second);
  });
  return pieces;
}

// Extends the seeds, which gives way to the repeats that they become.
void CRecordSearch::extend(repeat_list& seeds) {
  CSearchers::CLent lent(searchers);
  CSearchController controller(1, *record, its.settings, lent.workspace());
  controller.result_list.records.assign(seeds.begin(), seeds.end());
  controller.extend_seeds();
  seeds.assign(controller.work_list.records.begin(), controller.work_list.records.end());
  controller.work_list.records.clear();
}
