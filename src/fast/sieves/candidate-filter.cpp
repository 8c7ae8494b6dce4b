#include "candidate-filter.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "alignment-filter.h"
#include "run-filter.h"

CCandidateFilter::CCandidateFilter(const symbol_range& window, const symbol_range& its_record,
                                   const int* its_min_scores, const scoring& its_rules, unsigned its_longest_unit,
                                   CAlignmentPrograms& its_programs, CRecordPool* its_pool)
    : record(its_record),
      sequence(window.begin),
      length(static_cast<std::size_t>(window.end - window.begin)),
      min_scores(its_min_scores),
      rules(its_rules),
      longest_unit(its_longest_unit),
      has_strange_Ns(!rules.passes_over_Ns && length != 0 && std::memchr(sequence, 'N', length) != nullptr),
      programs(its_programs),
      pool(its_pool) {}

sieve_plan CCandidateFilter::plan_of(unsigned L) const {
  const auto record_length = static_cast<std::size_t>(record.end - record.begin);
  const std::size_t reach = length == record_length ? sieve_question::whole_record : context(longest_unit);
  return plan_sieves({bound_of(rules, L, min_scores[L]), record_length, reach, has_strange_Ns, programs});
}

const CPositionSet& CCandidateFilter::candidates(unsigned L, const asked_for& are_asked) {
  bound = bound_of(rules, L, min_scores[L]);
  plan = plan_of(L);
  tested_ahead.erase(tested_ahead.begin(), tested_ahead.lower_bound({L, 0}));
  kept.clear(length);
  find_candidates();
  const bool are_few = are_few_left(L);
  for (const unsigned size : plan.clusters) {
    if (are_few && size == 64) {
      test_few_words(are_asked);
    } else if (size != 0) {
      test_clusters(size, are_asked);
    }
  }
  return kept;
}

void CCandidateFilter::find_candidates() {
  switch (plan.first()) {
    case first_sieve::nothing:
      return;
    case first_sieve::kernel:
      return run_kernel();
    case first_sieve::program:
      return run_program();
    case first_sieve::batches:
      return run_batches();
    case first_sieve::windows:
      return run_windows();
    case first_sieve::potential:
      return run_potential();
    case first_sieve::everything:
      return kept.fill();
  }
}

const CBitPlanes& CCandidateFilter::planes_for(int reach) {
  const auto margin = static_cast<std::size_t>(reach);
  if (planes.length() == 0 || planes.margin() < margin) planes.build(sequence, length, margin);
  return planes;
}

void CCandidateFilter::run_kernel() {
  const alignment_kernel& kernel = *find_alignment_kernel(bound);
  const bool is_window = length != static_cast<std::size_t>(record.end - record.begin);
  if (pool == nullptr || is_window || length > longest_short_record) {
    kernel.run(planes_for(kernel.reach), kept);
  } else {
    pool->place(kernel, record, kept);
  }
}

void CCandidateFilter::run_program() {
  const alignment_program& program = programs.program_for(bound);
  run_alignment_program(program, planes_for(program.reach), rules.passes_over_Ns, kept);
}

// A path may make no edit before its score reaches the smaller penalty less b, so a candidate without a perfect run of
// that many matches through its unit stays below T. On random sequence this leaves little to do for the shortest units.
void CCandidateFilter::run_batches() {
  constexpr unsigned longest = 120;
  constexpr std::size_t room = CBatchBound::reach(longest) + longest + CBatchBound::most_candidates;
  if (padded.empty()) {
    padded.resize(length + 2 * room);
    std::copy_n(sequence, length, padded.data() + room);
  }
  const char* const begin = padded.data() + room;
  const int matches = std::min(std::min(bound.mismatch_penalty, bound.indel_penalty) - bound.b, bound.T);
  const char* const end = begin + length - bound.L;
  CRunFilter runs(begin, begin + length, bound.L, matches, rules.passes_over_Ns);
  for (const char* p = runs.first_kept(begin); p < end; p = runs.first_kept(p + CBatchBound::most_candidates)) {
    const auto count = std::min<std::size_t>(CBatchBound::most_candidates, static_cast<std::size_t>(end - p));
    kept.add_64(static_cast<std::size_t>(p - begin), batch.may_reach_next(bound, p, count, rules.passes_over_Ns));
  }
}

// For this unit length and the longer ones that have the same first sieve.
CPotentialFilter::settings CCandidateFilter::settings_for_all() const {
  CPotentialFilter::settings settings{bound.mismatch_penalty,
                                      bound.indel_penalty,
                                      rules.prefer_longer,
                                      rules.passes_over_Ns,
                                      bound.L,
                                      bound.L,
                                      [this](unsigned L) { return min_scores[L]; }};
  while (settings.longest < longest_unit && plan_of(settings.longest + 1).first() == plan.first()) ++settings.longest;
  return settings;
}

// Of shorter units windows leave so much that the potential, which tells more, is worth its price.
void CCandidateFilter::run_windows() {
  if (!windows.was_run()) windows.run(sequence, length, settings_for_all(), record);
  if (windows.are_few(bound.L)) {
    windows.place(bound.L, kept);
  } else {
    run_potential();
  }
}

// As many unit lengths are tested together as cost no more.
void CCandidateFilter::run_potential() {
  if (!potential.has(bound.L)) {
    CPotentialFilter::settings settings = settings_for_all();
    if (plan.first() == first_sieve::windows) {
      settings.longest = std::clamp(windows.longest_with_many(), bound.L, settings.longest);
    }
    settings.longest = CPotentialFilter::longest_alike(settings);
    potential.run(sequence, length, settings, record);
  }
  potential.place(bound.L, kept);
}

// Drops the clusters of `size` candidates from each start on that cannot reach their score, a batch at most.
void CCandidateFilter::test_batch(unsigned size, const std::size_t* starts, std::size_t count) {
  if (count == 0) return;
  std::array<const char*, CBatchBound::most_candidates> positions{};
  for (std::size_t i = 0; i < count; ++i) positions[i] = sequence + starts[i];
  const std::uint64_t bits =
      batch.clusters_may_reach(bound, static_cast<int>(size), record, positions.data(), count, rules.passes_over_Ns);
  for (std::size_t i = 0; i < count; ++i) {
    if ((bits >> i & 1) == 0) kept.remove_block(starts[i], size);
  }
}

// Clusters of `size` candidates, side by side. In a repeat that is covered none is asked for.
void CCandidateFilter::test_clusters(unsigned size, const asked_for& are_asked) {
  std::array<std::size_t, CBatchBound::most_candidates> starts{};
  std::size_t count = 0;
  for (std::size_t start = 0; start < kept.end(); start += size) {
    const std::uint64_t block = kept.block_bits(start, size);
    if (block == 0 || are_asked(bound.L, start / 64, block) == 0) continue;
    starts[count++] = start;
    if (count < starts.size()) continue;
    test_batch(size, starts.data(), count);
    count = 0;
  }
  test_batch(size, starts.data(), count);
}

// Whether windows have left so little that clusters are words, of which few come at a time.
bool CCandidateFilter::are_few_left(unsigned L) const {
  const sieve_plan its_plan = plan_of(L);
  return its_plan.first() == first_sieve::windows && its_plan.clusters[0] == 64 && windows.are_few(L);
}

// What does not fill a vector is tested together with words of longer units. Those of them that the mask does not admit
// now are left for later.
void CCandidateFilter::test_few_words(const asked_for& are_asked) {
  constexpr std::size_t together = 32;
  constexpr unsigned farthest_ahead = 64;
  std::vector<word_of_candidates> words;
  take_words(bound.L, are_asked, words);
  const auto rest = static_cast<std::ptrdiff_t>(words.size() / together * together);
  test_alone({words.begin(), words.begin() + rest});
  words.erase(words.begin(), words.begin() + rest);
  if (words.empty()) return;
  const std::size_t own = words.size();
  const unsigned last = std::min(longest_unit, bound.L + farthest_ahead);
  for (unsigned L = bound.L + 1; L <= last && words.size() < together && are_few_left(L); ++L) {
    take_words(L, are_asked, words);
  }
  if (words.size() > together) words.resize(together);
  if (words.size() == own) {
    test_alone(words);
  } else {
    test_with_longer(words);
  }
}

// The words of a unit length that are asked for and not known.
void CCandidateFilter::take_words(unsigned L, const asked_for& are_asked, std::vector<word_of_candidates>& words) {
  for (const auto& [number, bits] : windows.words(L, length)) {
    const auto known = tested_ahead.find({L, number});
    if (known == tested_ahead.end()) {
      if (are_asked(L, number, bits) != 0) words.push_back({L, number});
    } else if (L == bound.L && !known->second) {
      kept.remove_block(64 * number, 64);
    }
  }
}

void CCandidateFilter::test_with_longer(const std::vector<word_of_candidates>& words) {
  std::vector<CBatchBound::cluster> clusters;
  clusters.reserve(words.size());
  for (const auto& [L, number] : words) {
    clusters.push_back({bound_of(rules, L, min_scores[L]), sequence + 64 * number});
  }
  const CBatchBound::mixed_result result =
      batch.mixed_clusters_may_reach(clusters.data(), clusters.size(), 64, record, rules.passes_over_Ns);
  std::vector<word_of_candidates> given_up;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const auto [L, number] = words[i];
    const bool is_kept = (result.kept >> i & 1) != 0;
    const bool is_given_up = (result.given_up >> i & 1) != 0;
    if (L != bound.L) {
      if (!is_given_up) tested_ahead[{L, number}] = is_kept;
    } else if (is_given_up) {
      given_up.push_back(words[i]);
    } else if (!is_kept) {
      kept.remove_block(64 * number, 64);
    }
  }
  test_alone(given_up);
}

// Words of this unit length.
void CCandidateFilter::test_alone(const std::vector<word_of_candidates>& words) {
  std::array<std::size_t, CBatchBound::most_candidates> starts{};
  for (std::size_t first = 0; first < words.size(); first += starts.size()) {
    const std::size_t count = std::min(words.size() - first, starts.size());
    for (std::size_t i = 0; i < count; ++i) starts[i] = 64 * words[first + i].number;
    test_batch(64, starts.data(), count);
  }
}

std::uint64_t CCandidateFilter::still_candidates(const char* const* positions, std::size_t count) {
  if (count == 0) return 0;
  if (!plan.is_tested_again) return ~std::uint64_t{0} >> (CBatchBound::most_candidates - count);
  return batch.may_reach(bound, record, positions, count, rules.passes_over_Ns);
}
