#include "CFastShortcuts.h"

#include <algorithm>
#include <cstdint>

#include "leap-ahead.h"
#include "path-bound.h"
#include "sieve-plan.h"

void CFastShortcuts::begin_record(const char* its_begin, const char* its_end, const search_settings& its_settings) {
  CShortcuts::begin_record(its_begin, its_end, its_settings);
  settings = &its_settings;
  choice_space.remembered.forget();
  are_little_scores_kept = false;
}

void CFastShortcuts::end_record() {
  starts.reset();
  queue.reset();
  filter.reset();
  pool.announce({});
}

const char* CFastShortcuts::first_candidate(unsigned L, const CAnchorSeq& mask) {
  constexpr int little = 6;
  are_little_scores_kept = settings->min_scores[L] < little;
  if (!switches.candidates) return CShortcuts::first_candidate(L, mask);
  if (!filter) {
    const symbol_range window = window_of_starts();
    filter.emplace(window, symbol_range{begin, end}, settings->min_scores.data(), settings->rules,
                   settings->max_unit_length, programs, &pool);
    queue.emplace(*filter, window.begin, symbol_range{first_start, after_starts}, end, switches.tighter_test);
  }
  return queue->first(L, mask);
}

// Of a short record it is all.
symbol_range CFastShortcuts::window_of_starts() const {
  if (end - begin <= static_cast<std::ptrdiff_t>(longest_short_record)) return {begin, end};
  const auto context = static_cast<std::ptrdiff_t>(CCandidateFilter::context(settings->max_unit_length));
  return {first_start - std::min(context, first_start - begin), after_starts + std::min(context, end - after_starts)};
}

const char* CFastShortcuts::next_candidate(bool was_accepted) {
  return switches.candidates ? queue->next(was_accepted) : CShortcuts::next_candidate(was_accepted);
}

// What the batches keep, which follow the same paths, would be kept here as well.
bool CFastShortcuts::may_reach(const Csat& sat, const CUnitText& unit, int T) {
  const bool is_long = unit.length() > static_cast<int>(longest_tested_again);
  if (!switches.path_bound || is_long || (queue && queue->is_given_one_tested())) return true;
  return CPathBound(settings->rules, begin, end).may_reach(sat, unit, T);
}

void CFastShortcuts::begin_extension(bool to_the_right, const CUnitText& unit, const char* its_end) {
  if (!switches.edit_choice) return;
  unit_length = unit.length();
  const scoring& rules = settings->rules;
  if (to_the_right) {
    left.reset();
    right.emplace(
        extension<rightwards>{{rules, unit, its_end, choice_space}, {rules, unit, its_end, look_ahead_space}});
  } else {
    right.reset();
    left.emplace(extension<leftwards>{{rules, unit, its_end, choice_space}, {rules, unit, its_end, look_ahead_space}});
  }
}

// A walk of little score near the floor can pay for one or two edits, so the look-aheads as defined end sooner than the
// choice is begun.
bool CFastShortcuts::is_soon_looked_ahead(const extension_state& at) const {
  constexpr int least_score = 4;
  const scoring& rules = settings->rules;
  const std::int64_t three_edits = -std::int64_t{3} * std::max(rules.mismatch_score, rules.indel_score);
  return at.score < least_score && at.score - rules.least_after_edit(unit_length) < three_edits;
}

CShortcuts::decision CFastShortcuts::choose_edit(const extension_state& at, unsigned char depth, int best) {
  if (!switches.edit_choice || (are_little_scores_kept && is_soon_looked_ahead(at))) return {};
  return right ? choose(*right, at, depth, best) : choose(*left, at, depth, best);
}

// Both rules at the end of an extension keep nothing below best - P, so one that cannot come back to that ends at its
// best end.
template <typename Direction>
CShortcuts::decision CFastShortcuts::choose(extension<Direction>& side, const extension_state& at, unsigned char depth,
                                            int best) {
  const scoring& rules = settings->rules;
  if (rules.is_unlimited()) {
    const edit chosen = side.choice.choose(at, depth, best - rules.prefer_longer);
    return {true, chosen, chosen == edit::none && side.choice.is_hopeless()};
  }
  const auto deeper = static_cast<unsigned char>(depth + 1);
  return {true, best_edit<Direction>(at, best, rules, unit_length, [&](const extension_state& after) {
            return side.look_ahead.value(after, deeper, best);
          })};
}

void CFastShortcuts::begin_exact_scan(const exact_scan& scan) {
  is_known = false;
  if (switches.exact_starts) starts.emplace(begin, end, after_starts, scan, *settings);
}

const char* CFastShortcuts::next_start(const char* p) { return switches.exact_starts ? starts->next(p) : p; }

bool CFastShortcuts::is_known_repeat(Csat& sat) {
  is_known = switches.exact_starts && starts->is_known(sat);
  return is_known;
}

// A seed whose extension cannot reach the score would be extended, rejected and leave no trace: an extension reads
// nothing that other seeds change. What is known was worth storing before.
bool CFastShortcuts::is_worth_storing(const Csat& sat, const CUnitText& unit) {
  if (is_known) return true;
  const int T = settings->min_scores[static_cast<unsigned>(sat.unit_length())];
  return sat.score >= T || may_reach(sat, unit, T);
}

const char* CFastShortcuts::start_after(const Csat& sat, bool is_stored, bool is_covered) {
  if (!switches.exact_starts) return CShortcuts::start_after(sat, is_stored, is_covered);
  return starts->after(sat, is_stored, is_covered);
}
