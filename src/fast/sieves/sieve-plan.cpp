#include "sieve-plan.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "batch-bound.h"
#include "potential-filter.h"
#include "window-filter.h"

namespace {

using question = sieve_question;

// Unit lengths by measurement. Where edits are cheap, programs are of little use from 11 on.
constexpr unsigned longest_for_kernel_if_short = 12;
constexpr unsigned shortest_for_potential = 21;
constexpr unsigned shortest_for_potential_if_mild = 16;
constexpr unsigned shortest_for_clusters = 8;
constexpr unsigned longest_for_small_clusters = 128;
// Where edits are cheap, one of 16 neighbours that the potential keeps often has a path that lives on.
constexpr unsigned largest_cluster_if_mild = 8;
constexpr unsigned longest_for_cluster_if_mild = 31;

bool is_mild(const question& q) { return std::min(q.bound.mismatch_penalty, q.bound.indel_penalty) < 5; }

// A score is no higher than the number of symbols beside the unit.
bool lacks_room(const question& q) {
  return static_cast<std::int64_t>(q.record_length) - q.bound.L < static_cast<std::int64_t>(q.bound.T);
}

// Kernels of short units cost less than anything else, even if few of the lanes are in use.
bool has_kernel_for_short(const question& q) {
  return q.is_short() && q.bound.L <= longest_for_kernel_if_short && q.kernel() != nullptr;
}

bool is_short(const question& q) { return q.is_short(); }

bool is_for_windows(const question& q) {
  return CWindowFilter::applies(q.bound.L, q.bound.mismatch_penalty, q.bound.indel_penalty, q.bound.T) &&
         CWindowFilter::pays(q.bound, q.record_length);
}

// The potential costs the same for every unit length and keeps less the longer the unit is, while the bit planes cost
// more with the square of it.
bool is_for_potential(const question& q) {
  return q.bound.L >= (is_mild(q) ? shortest_for_potential_if_mild : shortest_for_potential) &&
         CPotentialFilter::applies(q.bound.mismatch_penalty, q.bound.indel_penalty, q.bound.T);
}

bool has_kernel(const question& q) { return q.kernel() != nullptr; }

bool has_program(const question& q) {
  const alignment_program& program = q.programs.program_for(q.bound);
  return !program.is_empty() && q.is_at_hand(program.reach);
}

bool always(const question&) { return true; }

unsigned largest_cluster(const question& q, first_sieve first) {
  const bool is_small = first == first_sieve::potential && is_mild(q) && q.bound.L <= longest_for_cluster_if_mild;
  return is_small ? largest_cluster_if_mild : std::min(64U, std::bit_floor(q.bound.L));
}

constexpr std::array rows{
    sieve_row{first_sieve::nothing, "none", lacks_room, false, false, "a record without room for the minimum score"},
    sieve_row{first_sieve::kernel, "compiled program", has_kernel_for_short, false, false,
              "a short record, units up to 12, and the default scoring"},
    sieve_row{first_sieve::batches, "runs, batches", is_short, false, false,
              "a short record, and scores that fit a byte"},
    sieve_row{first_sieve::windows, "windows or potential", is_for_windows, true, true,
              "units of 128 to 4000 in long records; penalties of 5 or more, a minimum score above 3"},
    sieve_row{
        first_sieve::potential, "potential", is_for_potential, true, true,
        "units from 21 on, or from 16 on with a penalty below 5; penalties of 3 or more, a minimum score above 3"},
    sieve_row{first_sieve::kernel, "compiled program", has_kernel, false, true, "the default scoring"},
    sieve_row{first_sieve::program, "interpreted program", has_program, false, true,
              "a scoring of which a program is of use"},
    sieve_row{first_sieve::everything, "all", always, true, true, "all else"},
};

}  // namespace

const alignment_program& CAlignmentPrograms::program_for(const alignment_bound& bound) {
  const std::tuple key{bound.L, bound.mismatch_penalty, bound.indel_penalty, bound.b, bound.T};
  auto it = made.find(key);
  if (it == made.end()) it = made.emplace(key, make_alignment_program(bound)).first;
  return it->second;
}

bool sieve_question::is_short() const {
  return reach == whole_record && record_length <= longest_short_record && CBatchBound::is_narrow(bound) && bound.T > 0;
}

const alignment_kernel* sieve_question::kernel() const {
  const alignment_kernel* const found = has_strange_Ns ? nullptr : find_alignment_kernel(bound);
  return found != nullptr && is_at_hand(found->reach) ? found : nullptr;
}

alignment_bound bound_of(const scoring& rules, unsigned L, int T) {
  const auto penalty_of = [](int score) { return -std::max(score, -1000000); };  // beyond any score all behave alike
  return {L, penalty_of(rules.mismatch_score), penalty_of(rules.indel_score),
          static_cast<int>(-rules.least_after_edit(static_cast<int>(L))), T};
}

std::span<const sieve_row> sieve_rows() { return rows; }

sieve_plan plan_sieves(const sieve_question& q) {
  const auto* const row = std::find_if(rows.begin(), rows.end(), [&](const sieve_row& r) { return r.serves(q); });
  const bool has_batches = CBatchBound::applies(q.bound);
  sieve_plan plan{row, {}, row->is_tested_again && has_batches && q.bound.L <= longest_tested_again};
  if (row->has_clusters && has_batches && q.bound.L >= shortest_for_clusters) {
    const unsigned largest = largest_cluster(q, row->first);
    plan.clusters = {largest, q.bound.L <= longest_for_small_clusters ? largest / 4 : 0};
  }
  return plan;
}
