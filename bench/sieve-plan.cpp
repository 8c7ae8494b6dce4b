// Prints which sieves the candidates of imperfect mode go through, by record and unit length: the table that the search
// itself walks.
//
//   BUILD/bench/quarvo-sieve-plan [option of quarvo ...]     for example -U 100 -m -4

#include "sieve-plan.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "CSearchController.h"
#include "global-types-and-parameters.h"

namespace {

// What can be said of a plan, but for the unit length.
std::string text_of(const sieve_plan& plan) {
  std::string text = plan.row->name;
  for (const unsigned size : plan.clusters) {
    if (size != 0) text += ", clusters of " + std::to_string(size);
  }
  return text + (plan.is_tested_again ? "; what is left in batches" : "");
}

void print_plan(const char* record, std::size_t length, const search_settings& settings) {
  CAlignmentPrograms programs;
  const auto text_for = [&](unsigned L) {
    return text_of(plan_sieves(
        {bound_of(settings.rules, L, settings.min_scores[L]), length, sieve_question::whole_record, false, programs}));
  };
  std::printf("%s\n", record);
  for (unsigned L = settings.min_unit_length; L <= settings.max_unit_length;) {
    const unsigned first = L;
    const std::string text = text_for(first);
    while (L <= settings.max_unit_length && text_for(L) == text) ++L;
    std::printf("  unit length %5u to %5u   %s\n", first, L - 1, text.c_str());
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<char*> words(argv, argv + argc);
  std::string no_file = "none";
  words.push_back(no_file.data());
  if (read_and_init_parameters(static_cast<int>(words.size()), words.data()) != 0) return 1;
  CSearchController::make_minimum_arrays();
  const search_settings settings = current_search_settings();
  print_plan("Records of up to 1500 symbols", longest_short_record, settings);
  print_plan("Longer records", 1000 * longest_short_record, settings);
  std::printf("The first row that serves:\n");
  for (const sieve_row& row : sieve_rows()) std::printf("  %-20s  %s\n", row.name, row.condition);
  return 0;
}
