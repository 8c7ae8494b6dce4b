// The imperfect extension of one candidate: match, or make the edit whose look-ahead promises most, and end at the
// best.

#include <algorithm>
#include <cstdint>

#include "CSearchController.h"
#include "edit-choice.h"
#include "global-types-and-parameters.h"
#include "look-ahead.h"
#include "path-bound.h"

namespace {

// The choices of all extensions: one search runs at a time.
edit_choice_space& choice_space() {
  static edit_choice_space space;
  return space;
}

// The growing end of a repeat, in one direction. Works on a copy of what changes at that end; store() writes it back.
template <typename Direction>
class CExtension {
 public:
  CExtension(Csat& record, const CUnitText& its_unit, const char* position, const char* cursor, const char* its_end)
      : sat(record),
        unit(its_unit),
        end(its_end),
        rules(current_look_ahead_rules()),
        look_ahead(rules, its_unit, its_end),
        edit_choice(rules, its_unit, its_end, choice_space()),
        now{{position, static_cast<int>(cursor - record.unit_begin), record.score},
            record.mismatches,
            record.insertions,
            record.deletions,
            record.number_of_Ns,
            record.missense_count},
        best_end(now) {}

  void extend() {
    for (;;) {
      match();
      if (now.at.s == end || !pass_N_run()) {
        end_rule();
        return;
      }
      if (now.at.s == end || Direction::ahead(now.at.s) == unit.begin()[now.at.u]) continue;
      if (!make_best_edit()) {
        if (edit_choice.is_hopeless()) {
          now = best_end;
        } else {
          break_rule();
        }
        return;
      }
    }
  }

  const char* position() const { return now.at.s; }
  const char* cursor() const { return sat.unit_begin + now.at.u; }

  void store() const {
    sat.score = now.at.score;
    sat.mismatches = now.mismatches;
    sat.insertions = now.insertions;
    sat.deletions = now.deletions;
    sat.number_of_Ns = now.number_of_Ns;
    sat.missense_count = now.missense_count;
  }

 private:
  // All that an extension changes. Missense entries are only appended, so their count restores the list.
  struct snapshot {
    extension_state at;
    int mismatches;
    int insertions;
    int deletions;
    int number_of_Ns;
    unsigned missense_count;
  };

  Csat& sat;
  const CUnitText& unit;
  const char* end;
  look_ahead_rules rules;
  CLookAhead<Direction> look_ahead;
  CEditChoice<Direction> edit_choice;
  snapshot now;
  snapshot best_end;

  int next_cursor() const { return Direction::unit_step(now.at.u, unit.length()); }

  void advance() {
    now.at.s = Direction::step(now.at.s);
    now.at.u = next_cursor();
  }

  bool is_better_end() const { return now.at.score > best_end.at.score - rules.prefer_longer; }

  // At the end of the sequence or a long N run.
  void end_rule() {
    if (!is_better_end()) now = best_end;
  }

  // Where no edit is admissible. Kept also when the score lies exactly P below the best.
  void break_rule() {
    if (now.at.score < best_end.at.score - rules.prefer_longer) now = best_end;
  }

  void match() { run_on<Direction>(now.at, unit, end, false); }

  // Passes over a run of neutral N's ahead. Returns false, in front of the run, when it is too long.
  bool pass_N_run() {
    if (!rules.passes_over_Ns || Direction::ahead(now.at.s) != 'N') return true;
    int run = 0;
    for (const char* p = now.at.s; p != end && Direction::ahead(p) == 'N'; p = Direction::step(p)) {
      if (++run > global_Ns_allowed_in_a_row) return false;
    }
    for (; run > 0; --run) {
      advance();
      ++now.number_of_Ns;
    }
    return true;
  }

  // Makes the edit with the highest look-ahead value; of equals a mismatch, then an insertion. Returns false when none
  // is admissible.
  bool make_best_edit() {
    if (is_better_end()) best_end = now;
    const edit chosen = rules.is_unlimited() ? choose_edit_at_once() : choose_edit();
    if (chosen == edit::none) return false;
    make(chosen);
    return true;
  }

  // Both end rules keep nothing below best - P, so an extension that cannot come back to that ends at its snapshot.
  edit choose_edit_at_once() {
    return edit_choice.choose(now.at, sat.recursion_depth, best_end.at.score - rules.prefer_longer);
  }

  // The choice as it is defined, one look-ahead for each admissible edit.
  edit choose_edit() {
    const int best = best_end.at.score;
    const std::int64_t lower = rules.bound(best, unit.length());
    const auto depth = static_cast<unsigned char>(sat.recursion_depth + 1);
    const char* const behind = Direction::step(now.at.s);
    edit chosen = edit::none;
    int chosen_value = 0;
    const auto consider = [&](edit candidate, const char* s, int u, int penalty) {
      const int value = look_ahead.value({s, u, now.at.score + penalty}, depth, best);
      if (chosen != edit::none && value <= chosen_value) return;
      chosen = candidate;
      chosen_value = value;
    };
    if (static_cast<std::int64_t>(now.at.score) + rules.mismatch_score > lower) {
      consider(edit::mismatch, behind, next_cursor(), rules.mismatch_score);
    }
    if (static_cast<std::int64_t>(now.at.score) + rules.indel_score > lower) {
      consider(edit::insertion, behind, now.at.u, rules.indel_score);
      consider(edit::deletion, now.at.s, next_cursor(), rules.indel_score);
    }
    return chosen;
  }

  // An edit that consumes a symbol is recorded at that symbol, a deletion at the first symbol behind the gap.
  void record(const char* at, char letter) {
    sat.missense_count = now.missense_count;
    sat.add_missense(at, letter);
    now.missense_count = sat.missense_count;
  }
  const char* consumed_symbol() const { return std::min(now.at.s, Direction::step(now.at.s)); }

  void make(edit chosen) {
    switch (chosen) {
      case edit::mismatch:
        record(consumed_symbol(), 'M');
        now.at.score += rules.mismatch_score;
        ++now.mismatches;
        advance();
        break;
      case edit::insertion:
        record(consumed_symbol(), 'I');
        now.at.score += rules.indel_score;
        ++now.insertions;
        now.at.s = Direction::step(now.at.s);
        break;
      case edit::deletion:
        record(now.at.s, 'D');
        now.at.score += rules.indel_score;
        ++now.deletions;
        now.at.u = next_cursor();
        break;
      case edit::none:
        break;
    }
  }
};

void extend_right(Csat& sat, const CUnitText& unit, const char* seq_end) {
  CExtension<rightwards> extension(sat, unit, sat.pos_right, sat.fwd_unit_cursor, seq_end);
  extension.extend();
  extension.store();
  sat.pos_right = extension.position();
  sat.fwd_unit_cursor = extension.cursor();
}

void extend_left(Csat& sat, const CUnitText& unit, const char* seq_begin) {
  CExtension<leftwards> extension(sat, unit, sat.pos_left, sat.bwd_unit_cursor, seq_begin);
  extension.extend();
  extension.store();
  sat.pos_left = extension.position();
  sat.bwd_unit_cursor = extension.cursor();
}

}  // namespace

const CUnitText& CSearchController::unit_text_of(const Csat& sat) {
  static CUnitText text;
  text.set(sat.unit_begin, sat.unit_end);
  return text;
}

void CSearchController::extend_imperfect_forward(Csat& sat, const char* seq_end) {
  extend_right(sat, unit_text_of(sat), seq_end);
}

void CSearchController::extend_imperfect_backward(Csat& sat, const char* seq_stop) {
  extend_left(sat, unit_text_of(sat), seq_stop + 1);
}

bool CSearchController::extend_imperfect(Csat& sat) const {
  const CUnitText& unit = unit_text_of(sat);
  CPathBound bound(current_look_ahead_rules(), seq_begin(), seq_end());
  if (!bound.may_reach(sat, unit, minScores[sat.unit_length()])) return false;
  extend_right(sat, unit, seq_end());
  extend_left(sat, unit, seq_begin());
  sat.trim_Ns();
  return passes_thresholds(sat);
}

int CSearchController::extend_imperfect_forward_leap_ahead(const char* s, const char* u, const char* unit_begin,
                                                           const char* unit_end, int score, int /*unit_length*/,
                                                           unsigned char depth, const char* seq_end, int best_score) {
  CUnitText unit;
  unit.set(unit_begin, unit_end);
  return CLookAhead<rightwards>(current_look_ahead_rules(), unit, seq_end)
      .value({s, static_cast<int>(u - unit_begin), score}, depth, best_score);
}

int CSearchController::extend_imperfect_backward_leap_ahead(const char* s, const char* u, const char* unit_begin,
                                                            const char* unit_end, int score, int /*unit_length*/,
                                                            unsigned char depth, const char* seq_stop, int best_score) {
  CUnitText unit;
  unit.set(unit_begin, unit_end);
  return CLookAhead<leftwards>(current_look_ahead_rules(), unit, seq_stop + 1)
      .value({s, static_cast<int>(u - unit_begin), score}, depth, best_score);
}
