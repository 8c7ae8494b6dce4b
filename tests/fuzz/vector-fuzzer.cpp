// Every kind of vector code on the same search, with the filters on and off, against the plainest one without filters.
//
// Input: the options (option-bytes.h), then the sequence: letters are symbols (all but A, C, G and T are N), bytes from
// 128 on copy the end of the sequence once or several times, so that repeats are short to write.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "CSearchController.h"
#include "argument-vector.h"
#include "global-types-and-parameters.h"
#include "option-bytes.h"
#include "reference-cost.h"
#include "support/fast-search.h"
#include "vector-targets.h"

namespace {

constexpr double affordable_cost = 1e6;
constexpr std::size_t longest_sequence = 3000;

// A record with nothing after its last symbol, so that the sanitizer sees who reads there.
class CBareRecord : public CSequence_Mol {
 public:
  explicit CBareRecord(const std::string& text) : CSequence_Mol(1, 'N') {
    std::free(symbols.buffer);
    symbols.buffer = static_cast<char*>(std::malloc(std::max<std::size_t>(1, text.size())));
    if (symbols.buffer == nullptr) std::abort();
    std::memcpy(symbols.buffer, text.data(), text.size());
    symbols.length = symbols.capacity = static_cast<unsigned>(text.size());
    full_name.assign("fuzz");
    short_name.assign("fuzz");
  }
};

std::string sequence_of(const std::string& bytes, std::size_t longest) {
  constexpr std::string_view known = "ACGT";
  std::string sequence;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    if (value < 128) {
      sequence += known.find(byte) != std::string_view::npos ? byte : 'N';
      continue;
    }
    const std::size_t length = std::min<std::size_t>(sequence.size(), (value >> 2 & 31U) + 1);
    const std::string copy = sequence.substr(sequence.size() - length);
    for (unsigned times = 1 + (value & 3U); times != 0; --times) sequence += copy;
    if (sequence.size() >= longest) break;
  }
  sequence.resize(std::min(sequence.size(), longest));
  return sequence;
}

// Standard error without the progress of searches while this lives.
class CSilence {
 public:
  CSilence() : usual(stderr) {
    static std::FILE* const nowhere = std::fopen("/dev/null", "w");
    stderr = nowhere;
  }
  CSilence(const CSilence&) = delete;
  CSilence& operator=(const CSilence&) = delete;
  ~CSilence() { stderr = usual; }

 private:
  std::FILE* usual;
};

// Sets the parameters, and shows all that there is to a repeat. Returns false when the checks reject them.
bool set_parameters(std::vector<std::string> words) {
  const CSilence silence;
  words.emplace_back("in.fa");
  CArgumentVector arguments(std::move(words));
  if (read_and_init_parameters(arguments.argc(), arguments.argv()) != 0) return false;
  global_print_sat_mode = extended_quarvo_format;
  global_print_sat_seq_mode = print_alignment;
  global_remove_mostly_hidden = false;
  return true;
}

std::string search(const std::string& sequence, bool with_filters) {
  const CSilence silence;
  char* text = nullptr;
  std::size_t length = 0;
  std::FILE* const out = open_memstream(&text, &length);
  if (out == nullptr) std::abort();
  {
    CBareRecord record(sequence);
    shortcut_switches switches;
    switches.candidates = with_filters;
    CFastSearch fast(record, switches);
    CSearchController& controller = fast.controller;
    if (global_search_mode == search_mode_exact) controller.exact_search_2();
    if (global_search_mode == search_mode_extend_exact) controller.search_exact_and_extend_to_imperfect_repeats();
    if (global_search_mode == search_mode_imperfect) controller.complete_imperfect_search(out);
    controller.report_SATList(out, controller.result_list.records);
    controller.report_SATList(out, controller.work_list.records);
  }
  std::fclose(out);
  std::string found(text, length);
  std::free(text);
  return found;
}

class CYardstick {
 public:
  CYardstick(const fuzz_case& its_case, const std::string& its_sequence) : tested(its_case), sequence(its_sequence) {}

  void compare(const std::string& found, const char* target, bool with_filters) const {
    if (found == text) return;
    std::fprintf(stderr, "DIFFERENCE: %s %s filters.\noptions:", target, with_filters ? "with" : "without");
    for (const std::string& word : tested.words) std::fprintf(stderr, " %s", word.c_str());
    std::fprintf(stderr, "\nsequence: %s\nfound:\n%s\nplainest:\n%s\n", sequence.c_str(), found.c_str(), text.c_str());
    std::abort();
  }

  std::string text;

 private:
  const fuzz_case& tested;
  const std::string& sequence;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz_case tested = take_options(data, size);
  if (!set_parameters(tested.words)) return 0;
  const std::size_t affordable =
      differential::affordable_symbols(tested.settings, differential::texture::dense, affordable_cost);
  const std::string sequence = sequence_of(tested.rest, std::min(affordable, longest_sequence));
  CSearchController::reset_minimum_arrays();

  CYardstick yardstick(tested, sequence);
  use_plainest_vector_target();
  yardstick.text = search(sequence, false);
  for (const bool with_filters : {true, false}) {
    on_each_vector_target(
        [&](const char* target) { yardstick.compare(search(sequence, with_filters), target, with_filters); });
  }
  return 0;
}
