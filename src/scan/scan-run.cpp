// One whole scan: batches of records are read one after the other, searched at once, and reported in their order.

#include "scan-run.h"

#include <malloc.h>
#include <tbb/global_control.h>
#include <tbb/task_arena.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <set>
#include <stdexcept>

#include "CConversionPipe.h"
#include "CLineReader.h"
#include "CProgressMeter.h"
#include "CRecordReport.h"
#include "CRecordSearch.h"
#include "CScanInput.h"
#include "CTemporaryFile.h"
#include "available-cores.h"
#include "companion.h"
#include "for-each-in-turn.h"
#include "global-types-and-parameters.h"
#include "pipeline-in-order.h"
#include "quarvo-legend.h"
#include "quarvo-messages.h"
#include "results-texts.h"
#include "scan-options.h"
#include "scan-output.h"
#include "sequence-names.h"
#include "shown-text.h"
#include "stretches.h"

namespace {

// In symbols; enough to keep all threads busy.
constexpr std::int64_t least_batch = 1 << 22;
constexpr std::int64_t least_batch_a_thread = 1 << 19;
constexpr std::size_t batches_at_once = 3;  // one read, one searched, one reported

// For tests of the borders between stretches: a number of symbols, or 0.
unsigned number_in_environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? 0 : static_cast<unsigned>(std::strtoul(value, nullptr, 10));
}

struct batch {
  std::vector<std::unique_ptr<scan_record>> records;
  std::vector<repeat_list> repeats;
};

CProgressMeter::style style_of_progress() {
  if (scan_options.quiet) return CProgressMeter::style::none;
  if (isatty(STDERR_FILENO) != 0) return CProgressMeter::style::terminal;
  return scan_options.progress ? CProgressMeter::style::lines : CProgressMeter::style::none;
}

std::string joined(const std::vector<std::string>& names) {
  std::string all;
  for (const std::string& name : names) all += (all.empty() ? "" : ", ") + name;
  return all;
}

class CScan {
 public:
  explicit CScan(unsigned its_threads)
      : threads(its_threads),
        input(scan_options.inputs, static_cast<int>(threads), mask() != no_mask && !global_mask_repeats) {}

  // The steps of a run; each returns 0 or the status with which the run ends.
  int read_names();
  int open();
  int search();
  int finish();

 private:
  unsigned threads;
  CScanInput input;
  CConvertedFile output;
  CConvertedFile masked;
  CConversionPipe conversion;
  std::FILE* results = nullptr;
  std::set<std::string, std::less<>> wanted;  // names still to come, if any were asked for
  bool wants_all = true;
  search_settings settings = (CSearchController::make_minimum_arrays(), current_search_settings());
  CSearchers searchers;
  std::unique_ptr<CProgressMeter> progress;
  std::atomic<int> status = 0;
  unsigned longest_sequence = 0;

  static masking mask() { return static_cast<masking>(scan_options.mask); }
  static bool is_converted() { return scan_options.to >= first_conversion; }

  bool is_wanted(scan_record& record);
  std::shared_ptr<batch> read_batch();
  std::vector<search_stretch> stretches_of(const scan_record& record, std::int64_t behind) const;
  void search(batch& all);
  void report(batch& all);
  bool is_written() const;
  int end_with(int its_status, const std::string& message) const;
};

int CScan::end_with(int its_status, const std::string& message) const {
  if (progress) progress->stop();
  std::fputs(message.c_str(), stderr);
  std::fputs(output.fate(), stderr);
  return its_status;
}

int CScan::read_names() {
  wants_all = scan_options.sequences.empty() && scan_options.sequences_from.empty();
  for (std::size_t from = 0; from < scan_options.sequences.size();) {
    const std::size_t comma = std::min(scan_options.sequences.find(',', from), scan_options.sequences.size());
    if (comma != from) wanted.insert(scan_options.sequences.substr(from, comma - from));
    from = comma + 1;
  }
  if (!scan_options.sequences_from.empty()) {
    CLineReader lines;
    const bool is_open = lines.open(scan_options.sequences_from);
    CLineReader::outcome outcome = is_open ? lines.next() : CLineReader::outcome::failed;
    for (; outcome == CLineReader::outcome::line; outcome = lines.next()) {
      const std::string name(plain_name(lines.text()));
      if (!name.empty()) wanted.insert(name);
    }
    if (outcome != CLineReader::outcome::end_of_file) {
      return end_with(companion_status::not_read, "Sorry! These names cannot be read:\n   \"" +
                                                      shown(scan_options.sequences_from) + "\"\n" + lines.error() +
                                                      ".\n");
    }
  }
  if (wants_all || !wanted.empty()) return 0;
  return end_with(companion_status::command_line,
                  "Sorry! --sequences and --sequences-from name no sequence. Please name some, one a line in the\n"
                  "file, or leave out these options to search all.\n");
}

int CScan::open() {
  if (!input.open()) return end_with(input.status(), input.error());
  std::vector<std::string> read = scan_options.inputs;
  if (!scan_options.sequences_from.empty()) read.push_back(scan_options.sequences_from);
  if (is_standard_error(read)) return companion_status::not_written;
  if (scan_options.index && !scan_options.force && has_index(scan_options.output)) {
    return end_with(companion_status::not_written,
                    "Sorry! The output has an index already. To replace it, give --force.\n");
  }
  const auto open_file = [&](CConvertedFile& file, const std::string& name, bool may_replace) {
    return open_output(file, name, read, may_replace, static_cast<int>(threads));
  };
  if (!open_file(output, scan_options.output, scan_options.force)) return companion_status::not_written;
  if (mask() != no_mask) {
    if (scan_options.masked == scan_options.output) {
      return end_with(companion_status::not_written, "Sorry! Output and masked file are one file.\n");
    }
    const bool may_replace = scan_options.force || global_mask_repeats;
    if (!open_file(masked, scan_options.masked, may_replace)) return companion_status::not_written;
  }
  results = output.stream();
  if (is_converted()) {
    conversion_settings chosen;
    chosen.to = scan_options.to - first_conversion;
    if (!conversion.open(output.stream(), chosen)) {
      return end_with(companion_status::not_written, "Sorry! There is no pipe to be had for the conversion.\n");
    }
    results = conversion.stream();
  }
  global_input_filename = joined(scan_options.inputs);
  global_output_filename = is_converted() ? "" : scan_options.output;
  creator_message(results, comment_prefix);
  print_search_parameters(results, comment_prefix);
  print_output_format(results, comment_prefix);
  return 0;
}

// The range ends are compared as unsigned numbers, so that -1 is the last sequence of all.
bool CScan::is_wanted(scan_record& record) {
  if (record.number < static_cast<unsigned>(global_sequence_from) ||
      record.number > static_cast<unsigned>(global_sequence_to)) {
    return false;
  }
  if (wants_all) return true;
  return wanted.erase(std::string(plain_name(record.molecule.short_name.c_str()))) != 0;
}

// Null at the end.
std::shared_ptr<batch> CScan::read_batch() {
  auto all = std::make_shared<batch>();
  const std::int64_t enough = std::max(least_batch, threads * least_batch_a_thread);
  for (std::int64_t symbols = 0; symbols < enough && status == 0;) {
    std::unique_ptr<scan_record> record = input.next();
    if (record == nullptr) break;
    if (!is_wanted(*record)) {
      progress->add_searched(0, static_cast<double>(record->bytes));
      continue;
    }
    const faststring& its_symbols = record->molecule.symbols;
    if (global_mask_repeats) record->letters.assign(its_symbols.buffer, its_symbols.buffer + its_symbols.length);
    symbols += its_symbols.length;
    all->records.push_back(std::move(record));
  }
  return all->records.empty() || status != 0 ? nullptr : all;
}

std::vector<search_stretch> CScan::stretches_of(const scan_record& record, std::int64_t behind) const {
  const unsigned length = record.molecule.symbols.length;
  const unsigned chosen = number_in_environment("QUARVO_SCAN_STRETCH");
  return chosen != 0 ? equal_stretches(length, chosen)
                     : decreasing_stretches(length, behind, threads, settings.max_unit_length);
}

void CScan::search(batch& all) {
  all.repeats.resize(all.records.size());
  std::vector<std::int64_t> behind(all.records.size() + 1);
  for (std::size_t i = all.records.size(); i-- > 0;) {
    behind[i] = behind[i + 1] + all.records[i]->molecule.symbols.length;
  }
  for_each_in_turn(all.records.size(), [&](std::size_t i) {
    scan_record& record = *all.records[i];
    const unsigned length = record.molecule.symbols.length;
    const double bytes_a_symbol = length == 0 ? 0 : static_cast<double>(record.bytes) / length;
    CRecordSearch one({settings, global_search_mode, stretches_of(record, behind[i + 1]),
                       number_in_environment("QUARVO_SCAN_OVERLAP")},
                      searchers, [&](unsigned symbols) { progress->add_searched(symbols, symbols * bytes_a_symbol); });
    all.repeats[i] = one.search(record.molecule);
  });
}

bool CScan::is_written() const {
  return std::ferror(results) == 0 && std::ferror(output.stream()) == 0 &&
         (mask() == no_mask || std::ferror(masked.stream()) == 0);
}

void CScan::report(batch& all) {
  CRecordReport block(settings, searchers, mask());
  for (std::size_t i = 0; i < all.records.size(); ++i) {
    scan_record& record = *all.records[i];
    longest_sequence = std::max(longest_sequence, record.molecule.symbols.length);
    progress->add_repeats(block.write(results, record, all.repeats[i]));
    progress->add_sequence();
    if (mask() != no_mask) write_letters(masked.stream(), record);
  }
  std::fflush(results);
  if (!is_written()) status = companion_status::not_written;
}

int CScan::search() {
  progress = std::make_unique<CProgressMeter>(style_of_progress(), input.size());
  run_in_order<batch>(
      batches_at_once, [this] { return read_batch(); },
      [this](batch& all) {
        if (status == 0) search(all);
      },
      [this](batch& all) {
        if (status == 0) report(all);
      });
  return 0;
}

int CScan::finish() {
  if (input.status() != 0) return end_with(input.status(), input.error());
  if (!wanted.empty()) {
    return end_with(companion_status::not_fasta,
                    "Sorry! The input has no sequence of this name:\n   \"" + shown(*wanted.begin()) + "\"\n");
  }
  if (status == 0) print_closing_line(results);
  if (is_converted()) {
    if (const int failed = conversion.finish(); failed != 0) return end_with(failed, conversion.error());
  }
  progress->stop();
  if (mask() != no_mask && !finish_output(masked)) return companion_status::not_written;
  if (!finish_output(output)) return companion_status::not_written;
  if (scan_options.index &&
      !write_index(scan_options.output, scan_options.to == first_conversion + to_bed, longest_sequence)) {
    return companion_status::not_written;
  }
  if (!scan_options.quiet) std::fprintf(stderr, "%s\n", progress->summary().c_str());
  return 0;
}

// Whenever the heap of one thread grows or shrinks the page faults of all wait, so heaps do that in large steps.
void let_heaps_grow_in_large_steps() {
#ifdef __GLIBC__
  mallopt(M_TOP_PAD, 1 << 24);
#endif
}

// Whichever library asks for a thread that the system does not grant raises an exception, also where none may pass.
[[noreturn]] void end_without_threads() {
  try {
    if (std::current_exception() != nullptr) throw;
  } catch (const std::runtime_error&) {
    remove_unnamed_file();
    std::fputs("Sorry! The system does not grant so many threads. Please name fewer with --threads.\n", stderr);
    _exit(companion_status::out_of_memory);
  } catch (...) {
  }
  std::abort();
}

int run(unsigned threads) {
  CScan scan(threads);
  if (const int status = scan.read_names(); status != 0) return status;
  if (const int status = scan.open(); status != 0) return status;
  if (const int status = scan.search(); status != 0) return status;
  return scan.finish();
}

}  // namespace

int run_scan(int argc, char** argv) {
  if (const int status = read_scan_options(argc, argv); status != 0) return status;
  const unsigned threads = scan_options.threads != 0 ? scan_options.threads : available_cores();
  if (threads > 1) let_heaps_grow_in_large_steps();
  std::set_terminate(end_without_threads);
  const tbb::global_control limit(tbb::global_control::max_allowed_parallelism, threads);
  return tbb::task_arena(static_cast<int>(threads)).execute([threads] { return run(threads); });
}
