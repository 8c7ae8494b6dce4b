// The imperfect extension of one candidate: match, or make the edit whose look-ahead promises most, and end at the best.

#include <algorithm>
#include <cstdint>

#include "CSearchController.h"
#include "fast/look-ahead.h"
#include "global-types-and-parameters.h"

namespace {

// The growing end of a repeat, in one direction. Works on copies of the record's fields of that end and writes them back.
template <typename Direction>
class CExtension {
 public:
  CExtension(Csat& record, const char*& its_position, const char*& its_cursor, const char* its_end)
      : sat(record),
        position(its_position),
        cursor(its_cursor),
        end(its_end),
        rules(current_look_ahead_rules()),
        look_ahead(rules, its_end, record.unit_begin, record.unit_end) {}

  void extend() {
    take_snapshot();
    for (;;) {
      match();
      if (position == end || !pass_N_run()) {
        end_rule();
        return;
      }
      if (position == end || Direction::ahead(position) == *cursor) continue;
      if (!make_best_edit()) {
        break_rule();
        return;
      }
    }
  }

 private:
  enum edit { none, mismatch, insertion, deletion };

  struct snapshot {
    const char* position;
    const char* cursor;
    int score;
    int mismatches;
    int insertions;
    int deletions;
    int number_of_Ns;
    unsigned missense_count;  // entries are only appended, so the count restores the list
  };

  Csat& sat;
  const char*& position;
  const char*& cursor;
  const char* end;
  look_ahead_rules rules;
  CLookAhead<Direction> look_ahead;
  snapshot best_end{};

  const char* next_cursor() const { return Direction::unit_step(cursor, sat.unit_begin, sat.unit_end); }

  void advance() {
    position = Direction::step(position);
    cursor = next_cursor();
  }

  void take_snapshot() {
    best_end = {position,       cursor,        sat.score,        sat.mismatches,
                sat.insertions, sat.deletions, sat.number_of_Ns, sat.missense_count};
  }

  void restore_snapshot() {
    position = best_end.position;
    cursor = best_end.cursor;
    sat.score = best_end.score;
    sat.mismatches = best_end.mismatches;
    sat.insertions = best_end.insertions;
    sat.deletions = best_end.deletions;
    sat.number_of_Ns = best_end.number_of_Ns;
    sat.missense_count = best_end.missense_count;
  }

  bool is_better_end() const { return sat.score > best_end.score - rules.prefer_longer; }

  // At the end of the sequence or a long N run.
  void end_rule() {
    if (!is_better_end()) restore_snapshot();
  }

  // Where no edit is admissible. Kept also when the score lies exactly P below the best.
  void break_rule() {
    if (sat.score < best_end.score - rules.prefer_longer) restore_snapshot();
  }

  void match() {
    while (position != end && Direction::ahead(position) == *cursor) {
      ++sat.score;
      advance();
    }
  }

  // Passes over a run of neutral N's ahead. Returns false, in front of the run, when it is too long.
  bool pass_N_run() {
    if (!rules.passes_over_Ns || Direction::ahead(position) != 'N') return true;
    int run = 0;
    for (const char* p = position; p != end && Direction::ahead(p) == 'N'; p = Direction::step(p)) ++run;
    if (run > global_Ns_allowed_in_a_row) return false;
    for (; run > 0; --run) {
      advance();
      ++sat.number_of_Ns;
    }
    return true;
  }

  // Makes the edit with the highest look-ahead value; of equals a mismatch, then an insertion. Returns false when none
  // is admissible.
  bool make_best_edit() {
    if (is_better_end()) take_snapshot();
    const edit chosen = choose_edit();
    if (chosen == none) return false;
    make(chosen);
    return true;
  }

  edit choose_edit() {
    const int best = best_end.score;
    const std::int64_t lower = std::max<std::int64_t>(static_cast<std::int64_t>(best) - rules.score_reduction,
                                                      -static_cast<std::int64_t>(sat.unit_length())) -
                               rules.prefer_longer;
    const auto depth = static_cast<unsigned char>(sat.recursion_depth + 1);
    const char* const behind = Direction::step(position);
    edit chosen = none;
    int chosen_value = 0;
    const auto consider = [&](edit candidate, const char* s, const char* u, int penalty) {
      const int value = look_ahead.value(s, u, sat.score + penalty, depth, best);
      if (chosen != none && value <= chosen_value) return;
      chosen = candidate;
      chosen_value = value;
    };
    if (static_cast<std::int64_t>(sat.score) + rules.mismatch_score > lower) {
      consider(mismatch, behind, next_cursor(), rules.mismatch_score);
    }
    if (static_cast<std::int64_t>(sat.score) + rules.indel_score > lower) {
      consider(insertion, behind, cursor, rules.indel_score);
      consider(deletion, position, next_cursor(), rules.indel_score);
    }
    return chosen;
  }

  // An edit that consumes a symbol is recorded at that symbol, a deletion at the first symbol behind the gap.
  const char* consumed_symbol() const { return std::min(position, Direction::step(position)); }

  void make(edit chosen) {
    switch (chosen) {
      case mismatch:
        sat.add_missense(consumed_symbol(), 'M');
        sat.score += rules.mismatch_score;
        ++sat.mismatches;
        advance();
        break;
      case insertion:
        sat.add_missense(consumed_symbol(), 'I');
        sat.score += rules.indel_score;
        ++sat.insertions;
        position = Direction::step(position);
        break;
      case deletion:
        sat.add_missense(position, 'D');
        sat.score += rules.indel_score;
        ++sat.deletions;
        cursor = next_cursor();
        break;
      case none:
        break;
    }
  }
};

}  // namespace

void CSearchController::extend_imperfect_forward(Csat& sat, const char* seq_end) {
  CExtension<rightwards>(sat, sat.pos_right, sat.fwd_unit_cursor, seq_end).extend();
}

void CSearchController::extend_imperfect_backward(Csat& sat, const char* seq_stop) {
  CExtension<leftwards>(sat, sat.pos_left, sat.bwd_unit_cursor, seq_stop + 1).extend();
}

int CSearchController::extend_imperfect_forward_leap_ahead(const char* s, const char* u, const char* unit_begin,
                                                           const char* unit_end, int score, int /*unit_length*/,
                                                           unsigned char depth, const char* seq_end, int best_score) {
  return CLookAhead<rightwards>(current_look_ahead_rules(), seq_end, unit_begin, unit_end)
      .value(s, u, score, depth, best_score);
}

int CSearchController::extend_imperfect_backward_leap_ahead(const char* s, const char* u, const char* unit_begin,
                                                            const char* unit_end, int score, int /*unit_length*/,
                                                            unsigned char depth, const char* seq_stop,
                                                            int best_score) {
  return CLookAhead<leftwards>(current_look_ahead_rules(), seq_stop + 1, unit_begin, unit_end)
      .value(s, u, score, depth, best_score);
}
