#include "potential-filter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "potential-filter.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

#ifndef QUARVO_POTENTIAL_FILTER_COMMON
#define QUARVO_POTENTIAL_FILTER_COMMON
namespace quarvo_potential_filter {

// What is found, within a budget of memory: when there is too much, the longest unit lengths are given up.
class CFindings {
 public:
  CFindings(std::vector<CPotentialFilter::findings>& its_found, unsigned shortest, std::size_t sequence_length)
      : found(its_found), first_length(shortest), length(sequence_length) {}

  unsigned shortest() const { return first_length; }
  // One past the longest unit length that is still recorded.
  unsigned end() const { return first_length + static_cast<unsigned>(found.size()); }

  // Adds the candidate (p, L) to its strong or weak positions.
  void add(unsigned L, std::size_t p, bool is_strong, CPotentialFilter::CPositions CPotentialFilter::findings::*weak) {
    CPotentialFilter::findings& of_length = found[L - first_length];
    bytes += (is_strong ? of_length.strong : of_length.*weak).add(p, length);
    while (bytes > most_bytes() && found.size() > 1) {
      bytes -= found.back().bytes();
      found.pop_back();
    }
  }

 private:
  std::vector<CPotentialFilter::findings>& found;
  unsigned first_length;
  std::size_t length;
  std::size_t bytes = 0;

  std::size_t most_bytes() const { return 4 * length + 1000000; }
};

// From which value on a candidate is weak or strong; without a weak class both are the same.
struct threshold_pair {
  int weak;
  int strong;
};

// What a path gains or loses.
struct scoring {
  int match;
  int mismatch;
  int insertion;
  int deletion;
  bool Ns_match;
  unsigned largest_distance;
  int sufficient;                     // no value need be higher; assumed behind the end of a stretch
  std::vector<threshold_pair> right;  // by distance, as the next
  std::vector<threshold_pair> left;
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
  CPotential(const char* sequence, std::size_t sequence_length, const scoring& its_scoring, CFindings& its_found)
      : s(its_scoring), found(its_found), length(sequence_length) {
    stretch = static_cast<std::ptrdiff_t>((length + lanes() - 1) / lanes());
    // What is assumed behind the end of a stretch fades by about one a position, since the best of all paths counts.
    lead = s.sufficient + 16;
    margin = static_cast<std::ptrdiff_t>(s.largest_distance) + lead + 1;
    lay_out(sequence);
    values.resize((s.largest_distance + 2) * lanes());
  }

  void run_rightwards() {
    start();
    for (std::ptrdiff_t t = stretch + lead - 1; t >= 0; --t) {
      take_position<-1>(t, s.right, [this](std::size_t x, unsigned L, bool is_strong) {
        if (x < length && x >= L) found.add(L, x - L, is_strong, &CPotentialFilter::findings::weak_to_the_right);
      });
    }
  }

  void run_leftwards() {
    start();
    for (std::ptrdiff_t t = -lead; t < stretch; ++t) {
      take_position<+1>(t, s.left, [this](std::size_t x, unsigned L, bool is_strong) {
        if (x + 1 + L < length) found.add(L, x + 1, is_strong, &CPotentialFilter::findings::weak_to_the_left);
      });
    }
  }

 private:
  using tag = hn::CappedTag<Lane, 64>;
  using vector = hn::Vec<tag>;

  const tag d;
  const scoring& s;
  CFindings& found;
  std::size_t length;
  std::ptrdiff_t stretch = 0;
  std::ptrdiff_t lead = 0;
  std::ptrdiff_t margin = 0;
  std::vector<Lane> symbols;  // the vector of index t holds the symbols at position t of each stretch
  std::vector<Lane> values;   // V or W at the position in hand, by distance

  std::size_t lanes() const { return hn::Lanes(d); }
  const Lane* symbols_at(std::ptrdiff_t t) const {
    return symbols.data() + static_cast<std::size_t>(t + margin) * lanes();
  }
  vector set(int value) const { return hn::Set(d, static_cast<Lane>(std::min<int>(value, hwy::LimitsMax<Lane>()))); }

  // Positions outside the sequence hold 0, which take_position lets equal nothing.
  void lay_out(const char* sequence) {
    symbols.resize(static_cast<std::size_t>(stretch + 2 * margin) * lanes());
    auto to = symbols.begin();
    for (std::ptrdiff_t t = -margin; t < stretch + margin; ++t) {
      for (std::size_t lane = 0; lane < lanes(); ++lane, ++to) {
        const std::ptrdiff_t x = static_cast<std::ptrdiff_t>(lane) * stretch + t;
        if (x >= 0 && x < static_cast<std::ptrdiff_t>(length)) *to = static_cast<unsigned char>(sequence[x]);
      }
    }
  }

  void start() {
    std::fill(values.begin(), values.end(), static_cast<Lane>(s.sufficient));
    std::fill(values.end() - static_cast<std::ptrdiff_t>(lanes()), values.end(), Lane{0});
  }

  // From the values at the position behind (in the direction of the paths) those at position t. The symbol there is
  // compared with the ones at t + side * distance.
  template <int side, typename Record>
  void take_position(std::ptrdiff_t t, const std::vector<threshold_pair>& thresholds, Record record) {
    const bool is_recorded = t >= 0 && t < stretch;
    const unsigned end = s.largest_distance + 1;
    const unsigned record_begin = is_recorded ? found.shortest() : end;
    const unsigned record_end = is_recorded ? std::min(found.end(), end) : end;
    auto symbol = hn::LoadU(d, symbols_at(t));
    symbol = hn::IfThenElse(hn::Eq(symbol, hn::Zero(d)), set(1), symbol);
    auto shorter = hn::Zero(d);  // the new value at one distance less
    shorter = take_distances<side, false>(t, symbol, 1, std::min(record_begin, end), shorter, thresholds, record);
    shorter = take_distances<side, true>(t, symbol, record_begin, record_end, shorter, thresholds, record);
    take_distances<side, false>(t, symbol, record_end, end, shorter, thresholds, record);
  }

  template <int side, bool do_record, typename Record>
  vector take_distances(std::ptrdiff_t t, vector symbol, unsigned begin, unsigned end, vector shorter,
                        const std::vector<threshold_pair>& thresholds, const Record& record) {
    if (begin >= end) return shorter;
    const auto match = set(s.match);
    const auto mismatch = set(s.mismatch);
    const auto insertion = set(s.insertion);
    const auto deletion = set(s.deletion);
    const auto most = set(s.sufficient);
    const auto is_N = hn::Eq(symbol, set('N'));
    Lane* value = values.data() + begin * lanes();
    auto here = hn::LoadU(d, value);
    for (unsigned distance = begin; distance != end; ++distance, value += lanes()) {
      const auto longer = hn::LoadU(d, value + lanes());
      auto matches = hn::Eq(symbol, hn::LoadU(d, symbols_at(t + side * static_cast<std::ptrdiff_t>(distance))));
      if (s.Ns_match) matches = hn::Or(matches, is_N);
      const auto edited = hn::Max(hn::Max(hn::SaturatedSub(here, mismatch), hn::SaturatedSub(longer, insertion)),
                                  hn::SaturatedSub(shorter, deletion));
      shorter = hn::IfThenElse(matches, hn::Min(hn::SaturatedAdd(here, match), most), edited);
      hn::StoreU(shorter, d, value);
      here = longer;
      if (do_record) note(t, distance, shorter, thresholds[distance], record);
    }
    return shorter;
  }

  template <typename Record>
  HWY_INLINE void note(std::ptrdiff_t t, unsigned L, vector value, const threshold_pair& threshold,
                       const Record& record) {
    const auto excess = hn::SaturatedSub(value, set(threshold.weak - 1));
    const auto is_weak = hn::Ne(excess, hn::Zero(d));
    if (hn::AllFalse(d, is_weak)) return;
    note_lanes(t, L, value, is_weak, threshold.strong, record);
  }

  template <typename Record>
  void note_lanes(std::ptrdiff_t t, unsigned L, vector value, hn::Mask<tag> is_weak, int strong, const Record& record) {
    std::array<Lane, 64> lane_values{};
    std::array<std::uint8_t, 8> bytes{};
    std::uint64_t left = 0;
    hn::StoreU(value, d, lane_values.data());
    hn::StoreMaskBits(d, is_weak, bytes.data());
    std::memcpy(&left, bytes.data(), sizeof left);
    for (; left != 0 && L < found.end(); left &= left - 1) {
      const auto lane = static_cast<std::size_t>(std::countr_zero(left));
      record(lane * static_cast<std::size_t>(stretch) + static_cast<std::size_t>(t), L, lane_values[lane] >= strong);
    }
  }
};

template <typename Lane>
void run_both(const char* sequence, std::size_t length, const scoring& s, CFindings& found) {
  CPotential<Lane> potential(sequence, length, s, found);
  potential.run_rightwards();
  potential.run_leftwards();
}

void run_potential(const char* sequence, std::size_t length, const scoring& s, CFindings& found) {
  if (s.sufficient <= 255) {
    run_both<std::uint8_t>(sequence, length, s, found);
  } else {
    run_both<std::uint16_t>(sequence, length, s, found);
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

int ceiling(int numerator, int denominator) { return (numerator + denominator - 1) / denominator; }

// Nobody accepts scores that no lane can hold; a lower threshold only keeps more.
int capped(int min_score) { return std::min(min_score, 20000); }

int lowest_score(const CPotentialFilter::settings& s, unsigned L) { return static_cast<int>(L) + s.prefer_longer - 1; }

// The bonus e is 4/3. All values are in units of 1 / scale.
constexpr int scale = 3;
constexpr int e = 4;
constexpr int match = scale + e;

int X_of(const CPotentialFilter::settings& s, unsigned L) {
  return e * static_cast<int>(L) - scale * lowest_score(s, L);
}

using quarvo_potential_filter::threshold_pair;

// With q = scale / match.
threshold_pair right_threshold(const CPotentialFilter::settings& s, unsigned L) {
  const int X = X_of(s, L);
  const int T = capped(s.min_score(L));
  if (match * T >= 2 * X) return {ceiling((match - scale) * X, match), X};
  const int common = std::min(ceiling(match * X, match + scale), ceiling(match * T, 2));
  return {common, common};
}

threshold_pair left_threshold(const CPotentialFilter::settings& s, unsigned L) {
  const int X = X_of(s, L);
  threshold_pair threshold = right_threshold(s, L);
  if (threshold.weak != threshold.strong) {
    threshold.strong = ceiling((match * match - scale * (match - scale)) * X, match * match);
  }
  return threshold;
}

// X + b + q X of the longest unit, which no shorter one exceeds.
int sufficient_value(const CPotentialFilter::settings& s) {
  const int X = X_of(s, s.longest);
  return X + scale * lowest_score(s, s.longest) + ceiling(scale * X, match);
}

}  // namespace

bool CPotentialFilter::applies(const settings& s) {
  if (s.mismatch_penalty < 5 || s.indel_penalty < 5) return false;
  for (unsigned L = s.shortest; L <= s.longest; ++L) {
    if (right_threshold(s, L).weak <= 0) return false;
  }
  return true;
}

void CPotentialFilter::run(const char* sequence, std::size_t length, const settings& s) {
  const int longest = static_cast<int>(s.longest);
  // Insertions that a first copy can pay for: matches in it, less than b below 0, and a score to start from.
  const int insertions = (longest + lowest_score(s, s.longest) + X_of(s, s.longest) / match) / s.indel_penalty + 1;
  quarvo_potential_filter::scoring scoring{match,
                                           scale * s.mismatch_penalty - e,
                                           scale * s.indel_penalty,
                                           scale * s.indel_penalty - e,
                                           s.Ns_match,
                                           s.longest + static_cast<unsigned>(insertions),
                                           sufficient_value(s),
                                           std::vector<threshold_pair>(s.longest + 1),
                                           std::vector<threshold_pair>(s.longest + 1)};
  for (unsigned L = s.shortest; L <= s.longest; ++L) {
    scoring.right[L] = right_threshold(s, L);
    scoring.left[L] = left_threshold(s, L);
  }
  first_length = s.shortest;
  its_length = length;
  found.clear();
  found.resize(s.longest - s.shortest + 1);
  quarvo_potential_filter::CFindings recorded(found, first_length, length);
  using namespace quarvo_potential_filter;
  HWY_DYNAMIC_DISPATCH(run_potential)(sequence, length, scoring, recorded);
}

std::size_t CPotentialFilter::CPositions::add(std::size_t p, std::size_t length) {
  if (!bits.empty()) {
    bits[p / 64] |= std::uint64_t{1} << (p % 64);
    return 0;
  }
  if (list.size() < length / 32) {
    list.push_back(static_cast<std::uint32_t>(p));
    return sizeof(std::uint32_t);
  }
  const std::size_t before = bytes();
  bits.resize(length / 64 + 1);
  for (const std::uint32_t listed : list) bits[listed / 64] |= std::uint64_t{1} << (listed % 64);
  bits[p / 64] |= std::uint64_t{1} << (p % 64);
  std::vector<std::uint32_t>().swap(list);
  return bytes() > before ? bytes() - before : 0;
}

void CPotentialFilter::place(unsigned L, std::uint64_t* bits) {
  const findings& of_length = found[L - first_length];
  of_length.strong.place(bits);
  weak.assign((its_length + 63) / 64, 0);
  of_length.weak_to_the_right.place(weak.data());
  of_length.weak_to_the_left.place_common(weak.data(), bits);
}

void CPotentialFilter::CPositions::place_common(const std::uint64_t* among, std::uint64_t* to) const {
  for (const std::uint32_t p : list) to[p / 64] |= among[p / 64] & (std::uint64_t{1} << (p % 64));
  for (std::size_t word = 0; word < bits.size(); ++word) {
    if (bits[word] != 0) to[word] |= bits[word] & among[word];
  }
}

void CPotentialFilter::CPositions::place(std::uint64_t* to) const {
  for (const std::uint32_t p : list) to[p / 64] |= std::uint64_t{1} << (p % 64);
  for (std::size_t word = 0; word < bits.size(); ++word) {
    if (bits[word] != 0) to[word] |= bits[word];
  }
}
#endif
