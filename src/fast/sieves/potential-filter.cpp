#include "potential-filter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "potential-filter.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

#include "symbol-bits-inl.h"

#ifndef QUARVO_POTENTIAL_FILTER_COMMON
#define QUARVO_POTENTIAL_FILTER_COMMON
namespace quarvo_potential_filter {

// What is found, within a budget of memory: when there is too much, the longest unit lengths are given up.
class CFindings {
 public:
  static constexpr std::size_t most_lanes = 64;

  CFindings(std::vector<CPotentialFilter::CPositions>& its_found, unsigned shortest, std::size_t sequence_length)
      : found(its_found), words_in_hand(its_found.size()), first_length(shortest), length(sequence_length) {}

  unsigned shortest() const { return first_length; }
  // One past the longest unit length that is still recorded.
  unsigned end() const { return first_length + static_cast<unsigned>(found.size()); }

  // Each lane goes through a stretch of positions.
  void add(unsigned L, std::size_t p, std::size_t lane) {
    const unsigned index = L - first_length;
    bytes += found[index].add(p, length, words_in_hand[index][lane]);
    while (bytes > most_bytes() && found.size() > 1) {
      bytes -= found.back().bytes();
      found.pop_back();
    }
  }

 private:
  std::vector<CPotentialFilter::CPositions>& found;
  std::vector<std::array<std::size_t, most_lanes>> words_in_hand;
  unsigned first_length;
  std::size_t length;
  std::size_t bytes = 0;

  std::size_t most_bytes() const { return 4 * length + 1000000; }
};

// The distances at which a path may enter a later copy, as blocks of which the highest value is kept.
struct entry_range {
  // The first block, which serves from its beginning to the end of its segment; none where it begins before the unit
  // length, and the value in hand serves.
  int first_block;
  // Whole segments after that, by their first blocks.
  int next_block;
  int end_block;
};

// What is known of a unit length in one direction. A path is held by its score + b, scaled, + 1, which is 0 when it is
// dead.
struct length_terms {
  static constexpr std::size_t most_later_copies = 11;

  int start;          // at the first copy
  int first_gain;     // the first value that is gain enough
  int target;         // what is reached then
  int copy;           // e L, scaled
  std::size_t later;  // copies after the first that are looked at
  std::array<entry_range, most_later_copies> entries;
};

// What a path gains or loses.
struct scoring {
  int match;
  int mismatch;
  int insertion;
  int deletion;
  bool is_gain_half;  // of a value; three quarters otherwise
  bool Ns_match;
  int largest_distance;
  int block;  // distances in a block; a segment is a whole number of them
  int segment;
  int most;                         // no value is higher; assumed beyond the end of a stretch
  std::vector<length_terms> right;  // by unit length, as the next
  std::vector<length_terms> left;
};

}  // namespace quarvo_potential_filter
#endif

HWY_BEFORE_NAMESPACE();
namespace quarvo_potential_filter {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Both directions over a sequence that is cut into one stretch for each lane.
template <typename Lane>
class CPotential {
 public:
  CPotential(const char* sequence, std::size_t sequence_length, const symbol_range& around, const scoring& its_scoring,
             CFindings& its_found)
      : s(its_scoring), found(its_found), length(sequence_length), distances(s.largest_distance) {
    stretch = static_cast<std::ptrdiff_t>((length + lanes() - 1) / lanes());
    // Entries lie up to the largest distance after a candidate. What is assumed beyond the end of a stretch fades by
    // about one a position, since the best of all paths counts.
    lead = distances + s.most + 16;
    margin = distances + lead + 1;
    lay_out(sequence, around);
    values.resize(static_cast<std::size_t>(distances + 2) * lanes());
    highest.resize(static_cast<std::size_t>(slot(distances + 1) + 1) * lanes());
    make_histories();
  }

  void run_rightwards() {
    start();
    for (std::ptrdiff_t t = stretch + lead - 1; t >= 0; --t) {
      take_position<-1>(t, s.right, [this](std::size_t x, unsigned L, std::size_t lane) {
        if (x < length && x >= L) found.add(L, x - L, lane);
      });
    }
  }

  void run_leftwards() {
    start();
    for (std::ptrdiff_t t = -lead; t < stretch; ++t) {
      take_position<+1>(t, s.left, [this](std::size_t x, unsigned L, std::size_t lane) {
        if (x + 1 + L < length) found.add(L, x + 1, lane);
      });
    }
  }

 private:
  using tag = hn::CappedTag<Lane, CFindings::most_lanes>;
  using vector = hn::Vec<tag>;

  // What a block was when the path's end of the unit was so many steps ago: a ring.
  struct history {
    std::size_t begin;  // in `kept_blocks`, in vectors
    int size;
    int newest;
  };

  const tag d;
  const scoring& s;
  CFindings& found;
  std::size_t length;
  int distances;
  std::ptrdiff_t stretch = 0;
  std::ptrdiff_t lead = 0;
  std::ptrdiff_t margin = 0;
  std::vector<std::uint8_t> symbols;  // the vector of index t holds the symbols at position t of each stretch
  std::vector<Lane> values;           // V or W at the position in hand, by distance
  // By distance, with a slot that stays 0 after each segment: the highest value of the same unit end at this distance
  // and the longer ones of the segment.
  std::vector<Lane> highest;
  std::vector<history> histories;  // by block
  std::vector<Lane> kept_blocks;

  std::size_t lanes() const { return hn::Lanes(d); }
  int slot(int distance) const { return distance + distance / s.segment; }
  const std::uint8_t* symbols_at(std::ptrdiff_t t) const {
    return symbols.data() + static_cast<std::size_t>(t + margin) * lanes();
  }
  vector set(int value) const { return hn::Set(d, static_cast<Lane>(std::min<int>(value, hwy::LimitsMax<Lane>()))); }

  static HWY_INLINE vector load_symbols(tag to, const std::uint8_t* from) {
    if constexpr (sizeof(Lane) == 1) {
      return hn::LoadU(to, from);
    } else {
      return hn::PromoteTo(to, hn::LoadU(hn::Rebind<std::uint8_t, tag>(), from));
    }
  }

  // Positions that may not be read hold 0, which take_position lets equal nothing.
  void lay_out(const char* sequence, const symbol_range& around) {
    const std::ptrdiff_t first = around.begin - sequence;
    const std::ptrdiff_t after = around.end - sequence;
    symbols.resize(static_cast<std::size_t>(stretch + 2 * margin) * lanes());
    auto to = symbols.begin();
    for (std::ptrdiff_t t = -margin; t < stretch + margin; ++t) {
      for (std::size_t lane = 0; lane < lanes(); ++lane, ++to) {
        const std::ptrdiff_t x = static_cast<std::ptrdiff_t>(lane) * stretch + t;
        if (first <= x && x < after) *to = static_cast<unsigned char>(sequence[x]);
      }
    }
  }

  // A block is looked at when the distance has come down to a unit length, at the lowest the shortest.
  void make_histories() {
    std::size_t vectors = 0;
    for (int first = 0; first <= distances; first += s.block) {
      const int size = std::max(1, first - static_cast<int>(found.shortest()) + 1);
      histories.push_back({vectors, size, 0});
      vectors += static_cast<std::size_t>(size);
    }
    kept_blocks.resize(vectors * lanes());
  }

  void start() {
    std::fill(values.begin(), values.end(), static_cast<Lane>(s.most));
    std::fill(values.end() - static_cast<std::ptrdiff_t>(lanes()), values.end(), Lane{0});
    std::fill(highest.begin(), highest.end(), Lane{0});
  }

  // From the values at the position after (in the direction of the paths) those at position t. The symbol there is
  // compared with the ones at t + side * distance.
  template <int side, typename Record>
  void take_position(std::ptrdiff_t t, const std::vector<length_terms>& terms, const Record& record) {
    const bool is_recorded = t >= 0 && t < stretch;
    const int record_begin = is_recorded ? static_cast<int>(found.shortest()) : distances + 1;
    const int record_end = is_recorded ? static_cast<int>(found.end()) : distances + 1;
    auto symbol = load_symbols(d, symbols_at(t));
    symbol = hn::IfThenElse(hn::Eq(symbol, hn::Zero(d)), set(1), symbol);
    auto shorter = hn::Zero(d);  // the new value at one distance less
    for (int first = 0; first <= distances; first += s.block) {
      const int begin = std::max(first, 1);
      const int end = std::min(first + s.block, distances + 1);
      if (begin < record_end && end > record_begin) {
        shorter = take_distances<side, true>(t, symbol, begin, end, shorter, terms, record);
      } else {
        shorter = take_distances<side, false>(t, symbol, begin, end, shorter, terms, record);
      }
      keep_block(static_cast<std::size_t>(first / s.block), begin);
    }
  }

  void keep_block(std::size_t block, int begin) {
    history& h = histories[block];
    h.newest = h.newest + 1 == h.size ? 0 : h.newest + 1;
    hn::StoreU(hn::LoadU(d, highest.data() + static_cast<std::size_t>(slot(begin)) * lanes()), d,
               kept_blocks.data() + (h.begin + static_cast<std::size_t>(h.newest)) * lanes());
  }

  // The highest value of the block for the candidate whose unit has ended at the distance L now.
  HWY_INLINE vector of_block(int block, int L) const {
    const history& h = histories[static_cast<std::size_t>(block)];
    int index = h.newest - (block * s.block - L) + 1;
    if (index < 0) index += h.size;
    return hn::LoadU(d, kept_blocks.data() + (h.begin + static_cast<std::size_t>(index)) * lanes());
  }

  template <int side, bool do_record, typename Record>
  HWY_INLINE vector take_distances(std::ptrdiff_t t, vector symbol, int begin, int end, vector shorter,
                                   const std::vector<length_terms>& terms, const Record& record) {
    const auto match = set(s.match);
    const auto mismatch = set(s.mismatch);
    const auto insertion = set(s.insertion);
    const auto deletion = set(s.deletion);
    const auto most = set(s.most);
    const auto is_N = s.Ns_match ? hn::Eq(symbol, set('N')) : hn::Ne(symbol, symbol);
    const std::size_t width = lanes();
    Lane* value = values.data() + static_cast<std::size_t>(begin) * width;
    Lane* high = highest.data() + static_cast<std::size_t>(slot(begin)) * width;
    const std::uint8_t* other = symbols_at(t + side * static_cast<std::ptrdiff_t>(begin));
    auto here = hn::LoadU(d, value);
    for (int distance = begin; distance != end; ++distance, value += width, high += width) {
      const auto longer = hn::LoadU(d, value + width);
      const auto matches = hn::Or(hn::Eq(symbol, load_symbols(d, other)), is_N);
      other += side * static_cast<std::ptrdiff_t>(width);
      const auto edited = hn::Max(hn::Max(hn::SaturatedSub(here, mismatch), hn::SaturatedSub(longer, insertion)),
                                  hn::SaturatedSub(shorter, deletion));
      shorter = hn::IfThenElse(matches, hn::Min(hn::SaturatedAdd(here, match), most), edited);
      hn::StoreU(shorter, d, value);
      const auto high_here = hn::Max(shorter, hn::LoadU(d, high + width));
      hn::StoreU(high_here, d, high);
      here = longer;
      if (do_record && distance >= static_cast<int>(found.shortest()) && distance < static_cast<int>(found.end())) {
        note(t, distance, shorter, high_here, terms[static_cast<std::size_t>(distance)], record);
      }
    }
    return shorter;
  }

  // The highest value with which a path may enter the copy.
  HWY_INLINE vector entry_value(const entry_range& range, int L, vector high_here) const {
    auto entry = range.first_block < 0 ? high_here : of_block(range.first_block, L);
    for (int block = range.next_block; block < range.end_block; block += s.segment / s.block) {
      entry = hn::Max(entry, of_block(block, L));
    }
    return entry;
  }

  // An upper bound of the scaled score that a value may stand for.
  HWY_INLINE vector gain_of(vector value) const {
    const auto half = hn::ShiftRight<1>(value);
    return hn::SaturatedSub(value, s.is_gain_half ? half : hn::ShiftRight<1>(half));
  }

  template <typename Record>
  HWY_INLINE void note(std::ptrdiff_t t, int L, vector value, vector high_here, const length_terms& terms,
                       const Record& record) {
    const auto zero = hn::Zero(d);
    const auto most = set(s.most);
    const auto copy = set(terms.copy);
    const auto below_target = set(terms.target - 1);
    const auto first = hn::SaturatedAdd(set(terms.start), value);
    auto kept = hn::Or(hn::SaturatedSub(value, set(terms.first_gain - 1)), hn::SaturatedSub(first, most));
    auto path = hn::SaturatedSub(first, copy);
    for (std::size_t i = 0; i < terms.later; ++i) {
      const auto is_alive = hn::Ne(path, zero);
      if (hn::AllFalse(d, is_alive)) break;
      const auto entry = entry_value(terms.entries[i], L, high_here);
      const auto end = hn::SaturatedAdd(path, entry);
      const auto gained = hn::SaturatedSub(hn::SaturatedAdd(path, gain_of(entry)), below_target);
      kept = hn::Or(kept, hn::IfThenElseZero(is_alive, hn::Or(gained, hn::SaturatedSub(end, most))));
      path = hn::IfThenElseZero(is_alive, hn::SaturatedSub(end, copy));
    }
    const auto is_kept = hn::Ne(hn::Or(kept, path), zero);
    if (hn::AllFalse(d, is_kept)) return;
    note_lanes(t, static_cast<unsigned>(L), is_kept, record);
  }

  template <typename Record>
  HWY_NOINLINE void note_lanes(std::ptrdiff_t t, unsigned L, hn::Mask<tag> is_kept, const Record& record) {
    std::uint64_t left = quarvo_symbol_bits::HWY_NAMESPACE::bits_of(d, is_kept);
    for (; left != 0 && L < found.end(); left &= left - 1) {
      const auto lane = static_cast<std::size_t>(std::countr_zero(left));
      record(lane * static_cast<std::size_t>(stretch) + static_cast<std::size_t>(t), L, lane);
    }
  }
};

template <typename Lane>
void run_both(const char* sequence, std::size_t length, const symbol_range& around, const scoring& s,
              CFindings& found) {
  CPotential<Lane> potential(sequence, length, around, s, found);
  potential.run_rightwards();
  potential.run_leftwards();
}

void run_potential(const char* sequence, std::size_t length, const symbol_range& around, const scoring& s,
                   CFindings& found) {
  if (s.most < 255) {
    run_both<std::uint8_t>(sequence, length, around, s, found);
  } else {
    run_both<std::uint16_t>(sequence, length, around, s, found);
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_potential_filter
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_potential_filter {
HWY_EXPORT(run_potential);
}

namespace {

using quarvo_potential_filter::entry_range;
using quarvo_potential_filter::length_terms;

// The bonus is bonus / scale, and all values are in units of 1 / scale. A value of 1 + e for a match is then worth a
// score of a half or two thirds of it.
struct unit_bonus {
  int bonus;
  int scale;
};

unit_bonus bonus_for(const CPotentialFilter::settings& s) {
  return std::min(s.mismatch_penalty, s.indel_penalty) >= 4 ? unit_bonus{1, 1} : unit_bonus{1, 2};
}

int lowest_score(const CPotentialFilter::settings& s, int L) { return L + s.prefer_longer - 1; }

// Nobody accepts scores that no lane can hold; a lower threshold only keeps more.
int target_score(const CPotentialFilter::settings& s, int L) {
  return std::min(s.min_score(static_cast<unsigned>(L)), 10000);
}

// The score that the right extension of a candidate may have that gains more to the left.
int least_to_the_right(int T) { return (T - 1) / 2; }

// Whether values of a byte can tell apart what is gain enough in the first copy.
bool is_narrow(const CPotentialFilter::settings& s, int L) {
  const auto [bonus, scale] = bonus_for(s);
  const int T = target_score(s, L);
  const int start = scale * (lowest_score(s, L) + least_to_the_right(T)) + 1;
  return start + (scale + bonus) * T * 3 / 8 < 254;
}

// Scores that the paths of a candidate may lose to insertions or deletions until they have consumed j copies.
int losses(const CPotentialFilter::settings& s, int L, int j, int start) { return j * L + lowest_score(s, L) + start; }

int farthest_distance(const CPotentialFilter::settings& s, int L, int j, int start) {
  return j * L + losses(s, L, j, start) / s.indel_penalty;
}

// Copies to look at of the longest unit; of shorter ones as many more as there are distances for. Paths of random
// sequence outlive several copies where the bonus is small or the unit is short.
int copies_of_longest(const CPotentialFilter::settings& s) {
  const auto [bonus, scale] = bonus_for(s);
  const bool is_long = s.longest >= 60;
  if (bonus == scale) return is_long ? 2 : 3;
  return is_long ? 7 : 10;
}

entry_range range_of(int block, int segment, int L, int nearest, int farthest) {
  const int first = nearest / block;
  const int next_segment = (std::max(nearest, L) / segment + 1) * segment;
  return {first * block <= L ? -1 : first, next_segment / block, farthest / block + 1};
}

length_terms terms_of(const CPotentialFilter::settings& s, const quarvo_potential_filter::scoring& scoring, int L,
                      int start, int needed) {
  const auto [bonus, scale] = bonus_for(s);
  length_terms terms{};
  terms.start = scale * (lowest_score(s, L) + start) + 1;
  terms.first_gain = std::min((scale + bonus) * needed, scoring.most);
  terms.target = std::min(terms.start + scale * needed, scoring.most);
  terms.copy = bonus * L;
  for (int j = 2; terms.later < length_terms::most_later_copies; ++j) {
    if (farthest_distance(s, L, j, start) > scoring.largest_distance) break;
    const int loss = losses(s, L, j - 1, start);
    terms.entries[terms.later++] = range_of(scoring.block, scoring.segment, L, j * L - loss / (s.indel_penalty + 1),
                                            j * L + loss / s.indel_penalty);
  }
  return terms;
}

}  // namespace

unsigned CPotentialFilter::longest_alike(const settings& s) {
  unsigned L = s.shortest;
  if (!is_narrow(s, static_cast<int>(L))) return s.longest;
  while (L < s.longest && is_narrow(s, static_cast<int>(L + 1))) ++L;
  return L;
}

void CPotentialFilter::run(const char* sequence, std::size_t length, const settings& s, const symbol_range& around) {
  const auto [bonus, scale] = bonus_for(s);
  const int longest = static_cast<int>(s.longest);
  const int start = least_to_the_right(target_score(s, longest));
  quarvo_potential_filter::scoring scoring{};
  scoring.match = scale + bonus;
  scoring.mismatch = scale * s.mismatch_penalty - bonus;
  scoring.insertion = scale * s.indel_penalty;
  scoring.deletion = scale * s.indel_penalty - bonus;
  scoring.is_gain_half = bonus == scale;
  scoring.Ns_match = s.Ns_match;
  scoring.largest_distance = farthest_distance(s, longest, copies_of_longest(s), start);
  scoring.block = scoring.largest_distance < 700 ? 8 : 32;
  scoring.segment = 4 * scoring.block;
  scoring.most = 254;
  if (!is_narrow(s, longest)) {
    scoring.most = scale * (lowest_score(s, longest) + start) + (scale + bonus) * target_score(s, longest) + 255;
  }
  scoring.right.resize(s.longest + 1);
  scoring.left.resize(s.longest + 1);
  for (unsigned L = s.shortest; L <= s.longest; ++L) {
    const int T = target_score(s, static_cast<int>(L));
    const int to_the_right = least_to_the_right(T);
    scoring.right[L] = terms_of(s, scoring, static_cast<int>(L), 0, to_the_right + 1);
    scoring.left[L] = terms_of(s, scoring, static_cast<int>(L), to_the_right, T - to_the_right);
  }
  first_length = s.shortest;
  found.clear();
  found.resize(s.longest - s.shortest + 1);
  quarvo_potential_filter::CFindings recorded(found, first_length, length);
  using namespace quarvo_potential_filter;
  HWY_DYNAMIC_DISPATCH(run_potential)(sequence, length, around, scoring, recorded);
}

std::size_t CPotentialFilter::CPositions::add(std::size_t p, std::size_t length, std::size_t& in_hand) {
  if (all.end() != 0) {
    all.add(p);
    return 0;
  }
  const auto number = static_cast<std::uint32_t>(p / 32);
  const std::uint32_t bit = std::uint32_t{1} << p % 32;
  if (in_hand < words.size() && words[in_hand].number == number) {
    words[in_hand].bits |= bit;
    return 0;
  }
  if ((words.size() + 1) * sizeof(word) <= length / 8) {
    in_hand = words.size();
    words.push_back({number, bit});
    return sizeof(word);
  }
  const std::size_t before = bytes();
  all.clear(length);
  all.add(p);
  place(all);
  std::vector<word>().swap(words);
  return bytes() > before ? bytes() - before : 0;
}

void CPotentialFilter::place(unsigned L, CPositionSet& kept) const { found[L - first_length].place(kept); }

void CPotentialFilter::CPositions::place(CPositionSet& to) const {
  for (const word& some : words) to.add_64(std::size_t{32} * some.number, some.bits);
  if (all.end() != 0) to.add(all);
}
#endif
