#include "alignment-program.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <utility>

namespace {

using slot = alignment_program::slot;

// Model of a random sequence, for the decisions of where to stop; nothing here affects what the test guarantees.
constexpr double match_probability = 0.25;
struct rarity {
  double state;   // states rarer than this are kept instead of followed
  double at_end;  // rows end when no more than this share is undecided
};
constexpr rarity rare{1e-4, 3e-3};
// Where all edits are cheap, there are so many rare states that to follow them costs more than to test what they keep.
constexpr rarity rare_if_mild{3e-4, 1e-2};
constexpr int least_penalty = 5;  // of an edit that is not cheap
constexpr int most_rows = 40;
constexpr unsigned most_operations = 6000;
constexpr double most_kept = 0.2;

struct place {
  int diagonal;  // 0 to L - 1
  int score;
  // A deletion stays in its row at a lower score.
  bool operator<(const place& other) const {
    if (score != other.score) return score > other.score;
    return diagonal < other.diagonal;
  }
};

// One plane of a row: which states lead to it, and where it is.
struct source {
  enum kind { hit, miss, insertion, deletion, start } how;
  slot from;
  slot matches;
};

struct plane {
  slot at = 0;
  double probability = 0;
  std::vector<source> sources;
  int lowest_true_score = 0;  // of what was rounded up to this plane's score
};

using planes = std::map<place, plane>;

// Writes the program of one candidate test: rightwards, then leftwards.
class CWriter {
 public:
  explicit CWriter(const alignment_bound& its_bound) : bound(its_bound) {
    next_slot = 3;
    result.accumulators.push_back(alignment_program::keep);
    for (const int score : make_levels()) {
      levels.push_back({score, next_slot});
      result.accumulators.push_back(next_slot++);
    }
    first_row_slot = next_slot;
  }

  alignment_program write() {
    // Rightwards from score 0; remembers which levels the best score exceeds.
    planes start;
    start[{0, 0}] = {0, 1.0, {{source::start, alignment_program::ones, alignment_program::zero}}, 0};
    run(start, false);
    // Leftwards from the best score, rounded up to a level.
    run(leftward_start(), true);
    result.slots = highest_slot;
    result.expected_kept = kept;
    if (is_too_wide || kept > most_kept || result.operations > most_operations) return {};
    return std::move(result);
  }

 private:
  struct level {
    int score;
    slot exceeded;  // the accumulator of "the best score to the right exceeds this level"
    double probability = 0;
  };

  alignment_bound bound;
  rarity rare_here = std::max(bound.mismatch_penalty, bound.indel_penalty) < least_penalty ? rare_if_mild : rare;
  alignment_program result;
  std::vector<level> levels;  // ascending; the top level T - 1 is not among them
  slot next_slot = 0;
  slot first_row_slot = 0;
  unsigned highest_slot = 0;
  bool is_too_wide = false;  // a row does not fit its half
  double kept = 0;

  std::vector<int> make_levels() const {
    std::vector<int> chosen;
    for (const int score : {1, 3}) {
      if (score < bound.T - 1) chosen.push_back(score);
    }
    return chosen;
  }

  planes leftward_start() const {
    planes start;
    slot above = alignment_program::ones;
    double share = 1;
    for (const level& l : levels) {
      start[{0, l.score}] = {0, share - l.probability, {{source::start, above, l.exceeded}}, l.score};
      above = l.exceeded;
      share = l.probability;
    }
    start[{0, bound.T - 1}] = {0, share, {{source::start, above, alignment_program::zero}}, bound.T - 1};
    return start;
  }

  // Offsets from p of the symbol examined at (row, diagonal) and of the unit symbol that it must equal.
  std::pair<int, int> compared_offsets(int row, int diagonal, bool leftwards) const {
    const int L = static_cast<int>(bound.L);
    const int unit_index = (row + diagonal) % L;
    if (leftwards) return {-1 - row, L - 1 - unit_index};
    return {L + row, unit_index};
  }

  // Slots of a row alternate between two halves, since a row reads the one before it.
  void run(planes current, bool leftwards) {
    for (int row = 0;; ++row) {
      alignment_program::row code;
      const slot begin = row % 2 == 0 ? first_row_slot : static_cast<slot>(first_row_slot + row_width);
      slot free_slot = begin;
      const bool last = is_last_row(row, current);
      std::map<int, slot> matches;
      current = emit_row(code, current, row, leftwards, last, free_slot, matches);
      result.operations +=
          static_cast<unsigned>(code.compares.size() + code.runs.size() + code.forks.size() + code.joins.size());
      result.rows.push_back(std::move(code));
      highest_slot = std::max<unsigned>(highest_slot, free_slot);
      is_too_wide |= free_slot - begin > row_width;
      if (last || current.empty()) return;
    }
  }

  static constexpr slot row_width = 400;

  bool is_last_row(int row, const planes& current) const {
    double alive = 0;
    for (const auto& [where, p] : current) alive += p.probability;
    return row >= most_rows || (row > 0 && alive < rare_here.at_end) || result.operations > most_operations;
  }

  // Writes the planes of a row and of what follows from them; returns the planes of the next row.
  planes emit_row(alignment_program::row& code, planes& current, int row, bool leftwards, bool last, slot& free_slot,
                  std::map<int, slot>& matches) {
    planes next;
    const auto matches_of = [&](int diagonal) {
      const auto [it, is_new] = matches.try_emplace(diagonal, free_slot);
      if (is_new) {
        ++free_slot;
        const auto [a, b] = compared_offsets(row, diagonal, leftwards);
        code.compares.push_back({it->second, a, b});
        result.reach = std::max({result.reach, std::abs(a), std::abs(b)});
      }
      return it->second;
    };
    // Deletions lead to lower scores of the same row, so `current` grows while it is walked in the order of scores.
    for (auto it = current.begin(); it != current.end(); ++it) {
      merge_neighbour(current, it);
      const place where = it->first;
      plane& here = it->second;
      here.at = free_slot++;
      emit_states(code, here);
      emit_rounding(code, where, here, leftwards);
      if (last) {
        add_miss(code, alignment_program::keep, here.at, alignment_program::zero);
        kept += here.probability;
        continue;
      }
      const slot E = matches_of(where.diagonal);
      follow_hit(code, where, here, E, leftwards, next);
      follow_miss(code, where, here, E, current, next);
    }
    return next;
  }

  // Rounds the plane one point below up into this one, if there is one on the same diagonal: one plane serves both.
  static void merge_neighbour(planes& current, planes::iterator it) {
    const auto below = current.find({it->first.diagonal, it->first.score - 1});
    if (below == current.end()) return;
    plane& into = it->second;
    into.probability += below->second.probability;
    into.lowest_true_score = std::min(into.lowest_true_score, below->second.lowest_true_score);
    std::move(below->second.sources.begin(), below->second.sources.end(), std::back_inserter(into.sources));
    current.erase(below);
  }

  // An operation takes one source of each kind; what is left over is ORed in by further ones.
  void emit_states(alignment_program::row& code, const plane& here) {
    std::vector<source> left = here.sources;
    bool first = true;
    while (!left.empty()) {
      constexpr slot zero = alignment_program::zero;
      alignment_program::join_op op{here.at, zero, zero, zero, zero, zero, zero, zero};
      bool has_deletion = !first;
      bool has_insertion = false;
      bool has_hit_or_miss = false;
      if (!first) op.deletion = here.at;
      std::vector<source> rest;
      for (const source& s : left) {
        if ((s.how == source::hit || s.how == source::miss) && fits(op, s, has_hit_or_miss)) {
          (s.how == source::hit ? op.hit : op.miss) = s.from;
          op.hit_matches = s.matches;
          has_hit_or_miss = true;
        } else if (s.how != source::hit && !has_insertion && s.how != source::deletion) {
          op.insertion = s.from;
          op.insertion_matches = s.matches;
          has_insertion = true;
        } else if (s.how != source::hit && !has_deletion) {
          op.deletion = s.from;
          op.deletion_matches = s.matches;
          has_deletion = true;
        } else {
          rest.push_back(s);
        }
      }
      add_state(code, op);
      left = std::move(rest);
      first = false;
    }
  }

  // Writes the operation in its cheapest form.
  static void add_state(alignment_program::row& code, const alignment_program::join_op& op) {
    constexpr slot zero = alignment_program::zero;
    const bool has_deletion = op.deletion != zero;
    const bool has_insertion = op.insertion != zero;
    const bool has_miss = op.miss != zero;
    if (!has_deletion && !has_insertion && !has_miss) {
      code.runs.push_back({op.to, op.hit, op.hit_matches});
    } else if (!has_deletion && !(has_insertion && has_miss)) {
      code.forks.push_back({op.to, op.hit, op.hit_matches, has_miss ? op.miss : op.insertion,
                            has_miss ? op.hit_matches : op.insertion_matches});
    } else {
      code.joins.push_back(op);
    }
  }

  static bool fits(const alignment_program::join_op& op, const source& s, bool has_hit_or_miss) {
    const slot used = s.how == source::hit ? op.hit : op.miss;
    return used == alignment_program::zero && (!has_hit_or_miss || op.hit_matches == s.matches);
  }

  // A plane that holds lower scores, rounded up over a level, exceeds that level as a whole.
  void emit_rounding(alignment_program::row& code, const place& where, const plane& here, bool leftwards) {
    if (leftwards) return;
    for (level& l : levels) {
      if (here.lowest_true_score > l.score || where.score <= l.score) continue;
      add_miss(code, l.exceeded, here.at, alignment_program::zero);
      l.probability = std::min(1.0, l.probability + here.probability);
    }
  }

  void follow_hit(alignment_program::row& code, const place& where, const plane& here, slot E, bool leftwards,
                  planes& next) {
    const double probability = here.probability * match_probability;
    if (!leftwards) {
      for (level& l : levels) {
        if (where.score != l.score) continue;
        code.hits.push_back({l.exceeded, here.at, E});
        l.probability = std::min(1.0, l.probability + probability);
      }
    }
    if (where.score + 1 >= bound.T) {
      code.hits.push_back({alignment_program::keep, here.at, E});
      kept += probability;
      return;
    }
    add(next, {where.diagonal, where.score + 1}, {source::hit, here.at, E}, probability);
  }

  void follow_miss(alignment_program::row& code, const place& where, const plane& here, slot E, planes& current,
                   planes& next) {
    const double probability = here.probability * (1 - match_probability);
    const int after_mismatch = where.score - bound.mismatch_penalty;
    const int after_indel = where.score - bound.indel_penalty;
    const bool mismatch = after_mismatch >= -bound.b;
    const bool indel = after_indel >= -bound.b;
    if (!mismatch && !indel) return;
    if (probability < rare_here.state) {
      add_miss(code, alignment_program::keep, here.at, E);
      kept += probability;
      return;
    }
    if (mismatch) add(next, {where.diagonal, after_mismatch}, {source::miss, here.at, E}, probability);
    if (!indel) return;
    add(next, {next_diagonal(where.diagonal, -1), after_indel}, {source::insertion, here.at, E}, probability);
    add(current, {next_diagonal(where.diagonal, +1), after_indel}, {source::deletion, here.at, E}, probability);
  }

  int next_diagonal(int diagonal, int by) const {
    const int L = static_cast<int>(bound.L);
    return (diagonal + by + L) % L;
  }

  // Adds to an operation with the same target and matches if one has room.
  static void add_miss(alignment_program::row& code, slot to, slot from, slot matches) {
    constexpr slot zero = alignment_program::zero;
    for (auto& op : code.misses) {
      if (op.to != to || op.matches != matches) continue;
      for (slot& room : op.from) {
        if (room != zero) continue;
        room = from;
        return;
      }
    }
    code.misses.push_back({to, matches, {from, zero, zero, zero}});
  }

  static void add(planes& to, place where, const source& s, double probability) {
    const auto [it, is_new] = to.try_emplace(where);
    if (is_new) it->second.lowest_true_score = where.score;
    it->second.sources.push_back(s);
    it->second.probability += probability;
  }
};

}  // namespace

alignment_program make_alignment_program(const alignment_bound& bound) {
  if (bound.T < 2) return {};
  return CWriter(bound).write();
}
