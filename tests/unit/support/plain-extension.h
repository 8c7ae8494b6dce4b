#ifndef QUARVO_TESTS_PLAIN_EXTENSION_H
#define QUARVO_TESTS_PLAIN_EXTENSION_H

// The imperfect extension as it is defined, one step after the other, for both directions.

#include <utility>
#include <vector>

#include "plain-look-ahead.h"

// A repeat's growing end and the counts that the extension changes.
struct plain_state {
  int position = 0;  // symbols passed on this side
  int u = 0;         // the unit symbol that comes next
  int score = 0;
  int mismatches = 0;
  int insertions = 0;
  int deletions = 0;
  int Ns = 0;
  std::vector<std::pair<int, char>> edits;  // position on this side, letter
};

class CPlainExtension {
 public:
  // Grows the side from the state, with a look-ahead that starts one level below `depth`.
  static plain_state extend(const plain_side& side, const plain_state& start, unsigned char depth) {
    CPlainExtension extension(side, start, depth);
    extension.run();
    return extension.now;
  }

 private:
  const plain_side& side;
  unsigned char depth;
  plain_state now;
  plain_state best;

  CPlainExtension(const plain_side& its_side, const plain_state& start, unsigned char its_depth)
      : side(its_side), depth(its_depth), now(start), best(start) {}

  void advance() {
    ++now.position;
    now.u = side.unit_step(now.u);
  }

  void run() {
    for (;;) {
      if (now.position == side.symbols) return end_rule();
      const char symbol = side.symbol(now.position);
      if (symbol == side.unit_symbol(now.u)) {
        ++now.score;
        advance();
      } else if (symbol == 'N' && global_Ns_allowed_in_a_row != 0 && !global_treat_Ns_as_missense) {
        const int length = run_of_Ns();
        if (length > global_Ns_allowed_in_a_row) return end_rule();
        for (int i = 0; i < length; ++i) {
          advance();
          ++now.Ns;
        }
      } else if (!edit()) {
        return break_rule();
      }
    }
  }

  int run_of_Ns() const {
    int length = 0;
    while (now.position + length != side.symbols && side.symbol(now.position + length) == 'N') ++length;
    return length;
  }

  bool edit() {
    if (now.score > best.score - global_prefer_longer_repeat) best = now;
    const std::int64_t lower = std::max<std::int64_t>(std::int64_t{best.score} - global_maximum_scorereduction,
                                                      -std::int64_t{side.unit_length}) -
                               global_prefer_longer_repeat;
    const auto deeper = static_cast<unsigned char>(depth + 1);
    const int behind = now.position + 1;
    const int next_u = side.unit_step(now.u);
    char chosen = ' ';
    int value = 0;
    const auto consider = [&](char letter, int s, int u, int penalty) {
      const int v = plain_look_ahead(side, s, u, now.score + penalty, deeper, best.score);
      if (chosen != ' ' && v <= value) return;
      chosen = letter;
      value = v;
    };
    if (now.score + global_mismatch_score > lower) consider('M', behind, next_u, global_mismatch_score);
    if (now.score + global_indel_score > lower) {
      consider('I', behind, now.u, global_indel_score);
      consider('D', now.position, next_u, global_indel_score);
    }
    if (chosen == ' ') return false;
    make(chosen);
    return true;
  }

  void make(char letter) {
    now.edits.emplace_back(now.position, letter);
    now.score += letter == 'M' ? global_mismatch_score : global_indel_score;
    if (letter == 'M') {
      ++now.mismatches;
      advance();
    } else if (letter == 'I') {
      ++now.insertions;
      ++now.position;
    } else {
      ++now.deletions;
      now.u = side.unit_step(now.u);
    }
  }

  void end_rule() {
    if (!(now.score > best.score - global_prefer_longer_repeat)) now = best;
  }

  void break_rule() {
    if (!(now.score >= best.score - global_prefer_longer_repeat)) now = best;
  }
};

#endif
