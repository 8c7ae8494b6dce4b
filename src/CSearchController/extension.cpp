#include "extension.h"

#include <algorithm>
#include <type_traits>

#include "edit.h"
#include "leap-ahead.h"
#include "perfect-run.h"

namespace {

// The growing end of a repeat, in one direction. Works on a copy of what changes at that end; store() writes it back.
template <typename Direction>
class CExtension {
 public:
  CExtension(Csat& record, const scoring& its_rules, const CUnitText& its_unit, const char* position,
             const char* cursor, const char* its_end, CShortcuts& its_shortcuts)
      : sat(record),
        rules(its_rules),
        unit(its_unit),
        end(its_end),
        shortcuts(its_shortcuts),
        now{{position, static_cast<int>(cursor - record.unit_begin), record.score},
            record.mismatches,
            record.insertions,
            record.deletions,
            record.number_of_Ns,
            record.missense_count},
        best_end(now) {
    shortcuts.begin_extension(std::is_same_v<Direction, rightwards>, unit, end);
  }

  void extend() {
    for (;;) {
      match();
      if (now.at.s == end || !pass_N_run()) {
        end_rule();
        return;
      }
      if (now.at.s == end || Direction::ahead(now.at.s) == unit.begin()[now.at.u]) continue;
      if (!make_best_edit()) {
        if (returns_to_best) {
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
  const scoring& rules;
  const CUnitText& unit;
  const char* end;
  CShortcuts& shortcuts;
  snapshot now;
  snapshot best_end;
  bool returns_to_best = false;

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
      if (++run > rules.Ns_in_a_row) return false;
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
    const edit chosen = choose_edit();
    if (chosen == edit::none) return false;
    make(chosen);
    return true;
  }

  edit choose_edit() {
    const int best = best_end.at.score;
    const CShortcuts::decision decided = shortcuts.choose_edit(now.at, sat.recursion_depth, best);
    returns_to_best = decided.returns_to_best;
    if (decided.is_made) return decided.chosen;
    const auto depth = static_cast<unsigned char>(sat.recursion_depth + 1);
    return best_edit<Direction>(now.at, best, rules, unit.length(), [&](const extension_state& after) {
      return leap_ahead<Direction>(after, depth, best, rules, unit, end);
    });
  }

  // An edit that consumes a symbol is recorded at that symbol, a deletion at the first symbol after the gap.
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

}  // namespace

void extend_right(Csat& sat, const scoring& rules, const CUnitText& unit, const char* end, CShortcuts& shortcuts) {
  CExtension<rightwards> extension(sat, rules, unit, sat.pos_right, sat.fwd_unit_cursor, end, shortcuts);
  extension.extend();
  extension.store();
  sat.pos_right = extension.position();
  sat.fwd_unit_cursor = extension.cursor();
}

void extend_left(Csat& sat, const scoring& rules, const CUnitText& unit, const char* end, CShortcuts& shortcuts) {
  CExtension<leftwards> extension(sat, rules, unit, sat.pos_left, sat.bwd_unit_cursor, end, shortcuts);
  extension.extend();
  extension.store();
  sat.pos_left = extension.position();
  sat.bwd_unit_cursor = extension.cursor();
}
