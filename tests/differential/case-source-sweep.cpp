#include <algorithm>
#include <string>

#include "case-sources.h"
#include "fasta-layout.h"
#include "reference-cost.h"
#include "sequence-maker.h"

namespace differential {

namespace {

// What happens to the sequence at every one of its positions in turn.
enum class change { overwrite_with_Ns, insert_Ns, substitute, insert, erase, cut_after, cut_before, shift };

struct sweep {
  change kind;
  std::string base;
  std::string piece;  // what is put in
  std::size_t erased;
};

std::string changed_at(const sweep& swept, std::size_t position) {
  std::string symbols = swept.base;
  switch (swept.kind) {
    case change::overwrite_with_Ns:
    case change::substitute:
      symbols.replace(position, std::min(swept.piece.size(), symbols.size() - position), swept.piece);
      break;
    case change::insert_Ns:
    case change::insert:
      symbols.insert(position, swept.piece);
      break;
    case change::erase:
      symbols.erase(position, swept.erased);
      break;
    case change::cut_after:
      symbols.resize(position);
      break;
    case change::cut_before:
      symbols.erase(0, position);
      break;
    case change::shift:
      symbols.insert(0, swept.piece, 0, position);
      break;
  }
  return symbols;
}

std::string piece_for(CRandom& random, change kind, const search_settings& settings, std::size_t base_length) {
  if (kind == change::overwrite_with_Ns || kind == change::insert_Ns) {
    const int allowed = std::clamp(settings.Ns_in_a_row, 0, 10);
    return std::string(static_cast<std::size_t>(std::max(1, allowed + random.between(-1, 2))), 'N');
  }
  std::string symbols;
  const std::size_t length = kind == change::shift ? base_length : 1 + random.below(random.percent(70) ? 1 : 4);
  while (symbols.size() < length) symbols += random.symbol_of("ACGT");
  return symbols;
}

sweep random_sweep(CRandom& random, const search_settings& settings) {
  const std::size_t affordable = affordable_symbols(settings, texture::dense, generous_cost / 80);
  const std::size_t length = std::clamp<std::size_t>(20 + random.below(120), 5, affordable + 5);
  sweep made;
  made.kind = static_cast<change>(random.below(8));
  made.base = make_sequence(random, settings, length);
  made.piece = piece_for(random, made.kind, settings, made.base.size());
  made.erased = 1 + random.below(random.percent(70) ? 1 : 4);
  return made;
}

test_case sweep_case(std::uint64_t seed, std::uint64_t index) {
  CRandom random(seed_of_case(seed, index));
  const search_settings settings = random_settings(random);
  const sweep swept = random_sweep(random, settings);
  std::vector<fasta_record> records;
  for (std::size_t position = 0; position <= swept.base.size(); ++position) {
    records.push_back({std::to_string(position), changed_at(swept, position)});
  }
  return {label_of("sweep", seed, index), settings.options, plain_fasta(records), names_with_results_file};
}

}  // namespace

case_source sweep_cases(std::uint64_t seed) {
  return [seed](std::uint64_t index) { return sweep_case(seed, index); };
}

}  // namespace differential
