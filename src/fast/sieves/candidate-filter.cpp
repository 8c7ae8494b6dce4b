#include "candidate-filter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <tuple>

#include "alignment-filter.h"
#include "alignment-kernels.h"
#include "alignment-program.h"
#include "run-filter.h"

namespace {

// Unit lengths from which tests pay, by measurement. Where edits are cheap, programs are of no use from 9 on.
constexpr unsigned shortest_for_potential = 21;
constexpr unsigned shortest_for_potential_if_mild = 16;
constexpr unsigned shortest_for_clusters = 8;
constexpr unsigned longest_for_small_clusters = 128;

// Penalties beyond what any score can reach behave alike.
int penalty_of(int score) { return -std::max(score, -1000000); }

}  // namespace

const alignment_program& alignment_programs::program_for(const alignment_bound& bound) {
  const std::tuple key{bound.L, bound.mismatch_penalty, bound.indel_penalty, bound.b, bound.T};
  auto it = made.find(key);
  if (it == made.end()) it = made.emplace(key, make_alignment_program(bound)).first;
  return it->second;
}

CCandidateFilter::CCandidateFilter(const symbol_range& window, const symbol_range& its_record,
                                   const int* its_min_scores, const scoring& its_rules, unsigned its_longest_unit,
                                   alignment_programs& its_programs)
    : record(its_record),
      sequence(window.begin),
      length(static_cast<std::size_t>(window.end - window.begin)),
      min_scores(its_min_scores),
      rules(its_rules),
      longest_unit(its_longest_unit),
      programs(its_programs) {}

const std::vector<std::uint64_t>& CCandidateFilter::candidates(unsigned L) {
  bound = {L, penalty_of(rules.mismatch_score), penalty_of(rules.indel_score),
           static_cast<int>(-rules.least_after_edit(static_cast<int>(L))), min_scores[L]};
  kept.assign((length + 63) / 64, 0);
  if (!has_room(L)) return kept;
  if (is_short()) {
    test_short_record();
  } else if (is_for_potential(L)) {
    test_potential(L);
  } else if (!test_alignment()) {
    keep_all();
    test_clusters();
  }
  return kept;
}

// A score is no higher than the number of symbols beside the unit.
bool CCandidateFilter::has_room(unsigned L) const {
  return static_cast<std::int64_t>(record_length()) - L >= static_cast<std::int64_t>(min_scores[L]);
}

// The potential costs the same for every unit length and keeps less the longer the unit is, while the bit planes cost
// more with the square of it.
bool CCandidateFilter::is_for_potential(unsigned L) const {
  const bool is_mild = std::min(bound.mismatch_penalty, bound.indel_penalty) < 5;
  return L >= (is_mild ? shortest_for_potential_if_mild : shortest_for_potential) &&
         (potential.has(L) || CPotentialFilter::applies(potential_settings(L)));
}

CPotentialFilter::settings CCandidateFilter::potential_settings(unsigned shortest) const {
  CPotentialFilter::settings settings{penalty_of(rules.mismatch_score),
                                      penalty_of(rules.indel_score),
                                      rules.prefer_longer,
                                      rules.passes_over_Ns,
                                      shortest,
                                      static_cast<unsigned>(std::min<std::size_t>(longest_unit, record_length())),
                                      [this](unsigned L) { return min_scores[L]; }};
  while (settings.longest > shortest && !has_room(settings.longest)) --settings.longest;
  settings.longest = CPotentialFilter::longest_alike(settings);
  return settings;
}

void CCandidateFilter::test_potential(unsigned L) {
  if (!potential.has(L)) potential.run(sequence, length, potential_settings(L), record);
  potential.place(L, kept.data());
  test_clusters();
}

// What the potential keeps lies close together: in sequence of few kinds of symbols, and beside copies of interspersed
// repeats.
void CCandidateFilter::test_clusters() {
  if (bound.L < shortest_for_clusters || !CBatchBound::applies(bound)) return;
  const unsigned largest = std::min(64U, std::bit_floor(bound.L));
  test_clusters(largest);
  if (bound.L <= longest_for_small_clusters) test_clusters(largest / 4);
}

// Clusters of `size` candidates, a power of two, side by side.
void CCandidateFilter::test_clusters(unsigned size) {
  const std::uint64_t whole = size < 64 ? (std::uint64_t{1} << size) - 1 : ~std::uint64_t{0};
  std::array<std::size_t, CBatchBound::most_candidates> starts{};
  std::array<const char*, CBatchBound::most_candidates> positions{};
  std::size_t count = 0;
  const auto test = [&] {
    if (count == 0) return;
    const std::uint64_t bits =
        batch.clusters_may_reach(bound, static_cast<int>(size), record, positions.data(), count, rules.passes_over_Ns);
    for (std::size_t i = 0; i < count; ++i) {
      if ((bits >> i & 1) == 0) kept[starts[i] / 64] &= ~(whole << starts[i] % 64);
    }
    count = 0;
  };
  for (std::size_t start = 0; start < 64 * kept.size(); start += size) {
    if ((kept[start / 64] >> start % 64 & whole) == 0) continue;
    starts[count] = start;
    positions[count++] = sequence + start;
    if (count == starts.size()) test();
  }
  test();
}

bool CCandidateFilter::is_short() const {
  return !is_window() && length <= longest_short_record && CBatchBound::is_narrow(bound) && bound.T > 0;
}

// Kernels of short units cost less than anything else, even if few of the lanes are in use.
//
// Otherwise: a path may make no edit before its score reaches the smaller penalty less b, so a candidate without a
// perfect run of that many matches through its unit stays below T. On random sequence this leaves little to do for the
// shortest units.
void CCandidateFilter::test_short_record() {
  constexpr unsigned longest_for_kernel = 12;
  if (bound.L <= longest_for_kernel && run_kernel()) return;
  constexpr unsigned longest = 120;
  constexpr std::size_t room = CBatchBound::reach(longest) + longest + CBatchBound::most_candidates;
  if (padded.empty()) {
    padded.resize(length + 2 * room);
    std::copy_n(sequence, length, padded.data() + room);
  }
  if (length <= bound.L) return;
  const char* const begin = padded.data() + room;
  const int matches = std::min(std::min(bound.mismatch_penalty, bound.indel_penalty) - bound.b, bound.T);
  const char* const end = begin + length - bound.L;
  CRunFilter runs(begin, begin + length, bound.L, matches, rules.passes_over_Ns);
  for (const char* p = runs.first_kept(begin); p < end; p = runs.first_kept(p + CBatchBound::most_candidates)) {
    const auto count = std::min<std::size_t>(CBatchBound::most_candidates, static_cast<std::size_t>(end - p));
    keep(static_cast<std::size_t>(p - begin), batch.may_reach_next(bound, p, count, rules.passes_over_Ns));
  }
}

// Sets the bits of the 64 positions from `first` on.
void CCandidateFilter::keep(std::size_t first, std::uint64_t bits) {
  const std::size_t shift = first % 64;
  kept[first / 64] |= bits << shift;
  if (shift != 0 && bits >> (64 - shift) != 0) kept[first / 64 + 1] |= bits >> (64 - shift);
}

bool CCandidateFilter::is_in_window(int reach) const {
  return !is_window() || static_cast<std::size_t>(reach) <= context(longest_unit);
}

// Returns false, and does nothing, where there is none. N's that are no gaps are left to the interpreter.
bool CCandidateFilter::run_kernel() {
  const alignment_kernel* const kernel = find_alignment_kernel(bound);
  if (kernel == nullptr || !is_in_window(kernel->reach)) return false;
  build_planes(kernel->reach);
  if (planes.has_Ns() && !rules.passes_over_Ns) return false;
  kernel->run(planes, kept.data());
  return true;
}

// Returns false, and does nothing, where no program is of use.
bool CCandidateFilter::test_alignment() {
  if (run_kernel()) return true;
  const alignment_program& program = programs.program_for(bound);
  if (program.is_empty() || !is_in_window(program.reach)) return false;
  build_planes(program.reach);
  run_alignment_program(program, planes, rules.passes_over_Ns, kept.data());
  return true;
}

void CCandidateFilter::build_planes(int reach) {
  const auto margin = static_cast<std::size_t>(reach);
  if (planes.length() == 0 || planes.margin() < margin) planes.build(sequence, length, margin);
}

void CCandidateFilter::keep_all() {
  std::fill(kept.begin(), kept.end(), ~std::uint64_t{0});
  if (length % 64 != 0) kept.back() >>= 64 - length % 64;
}

std::uint64_t CCandidateFilter::still_candidates(const char* const* positions, std::size_t count) {
  if (count == 0) return 0;
  if (is_short() || !CBatchBound::applies(bound)) {
    return ~std::uint64_t{0} >> (CBatchBound::most_candidates - count);
  }
  return batch.may_reach(bound, record, positions, count, rules.passes_over_Ns);
}
