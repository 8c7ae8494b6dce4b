#include "shrinker.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

namespace differential {

namespace {

// Bytes; what is smaller can be read and shrinks byte by byte.
constexpr std::size_t small_file = 2000;

// Stretches are not tried much finer than this share of a file: in a large one that would take for ever.
constexpr std::size_t finest_share = 128;

std::vector<std::string> cut_into_bytes(const std::string& fasta) {
  std::vector<std::string> parts;
  for (const char c : fasta) parts.emplace_back(1, c);
  return parts;
}

std::string join(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += part;
  return text;
}

// Turns the symbols of a stretch into N's and leaves everything else where it is. Returns false if there are none.
bool turn_into_Ns(std::string& fasta, std::size_t begin, std::size_t end) {
  bool changed = false;
  for (std::size_t at = begin; at < end; ++at) {
    if (std::string_view("ACGTacgt").find(fasta[at]) == std::string_view::npos) continue;
    fasta[at] = 'N';
    changed = true;
  }
  return changed;
}

std::optional<long long> whole_number(const std::string& word) {
  long long number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error != std::errc() || end != word.data() + word.size()) return std::nullopt;
  return number;
}

}  // namespace

std::vector<std::string> cut_into_records(const std::string& fasta) {
  std::vector<std::string> records;
  std::size_t begin = 0;
  while (begin < fasta.size()) {
    const std::size_t next = std::min(fasta.find("\n>", begin), fasta.size() - 1) + 1;
    records.push_back(fasta.substr(begin, next - begin));
    begin = next;
  }
  return records;
}

CShrinker::CShrinker(std::function<bool(const test_case&)> still_fails, int most_runs, int most_seconds)
    : fails(std::move(still_fails)),
      runs_left(most_runs),
      deadline(std::chrono::steady_clock::now() + std::chrono::seconds(most_seconds)) {}

test_case CShrinker::shrink(test_case failing) {
  smallest = std::move(failing);
  bool smaller = true;
  while (smaller && may_go_on()) {
    smaller = drop_parts(cut_into_records(smallest.fasta));
    smaller = drop_options() || smaller;
    smaller = drop_parts(cut_into_bytes(smallest.fasta)) || smaller;
    if (smallest.fasta.size() > small_file) smaller = blank_symbols() || smaller;
    smaller = join_lines() || smaller;
    smaller = reduce_numbers() || smaller;
  }
  return smallest;
}

bool CShrinker::may_go_on() const { return runs_left > 0 && std::chrono::steady_clock::now() < deadline; }

bool CShrinker::accept_if_failing(const test_case& candidate) {
  if (!may_go_on()) return false;
  --runs_left;
  if (!fails(candidate)) return false;
  smallest = candidate;
  return true;
}

bool CShrinker::drop_options() {
  bool smaller = false;
  for (std::size_t i = smallest.options.size(); i-- > 0;) {
    test_case candidate = smallest;
    candidate.options.erase(candidate.options.begin() + static_cast<std::ptrdiff_t>(i));
    smaller = accept_if_failing(candidate) || smaller;
  }
  return smaller;
}

// Leaves out stretches of parts: halves first, then quarters, down to single parts.
bool CShrinker::drop_parts(std::vector<std::string> parts) {
  bool smaller = false;
  const std::size_t finest = parts.size() > small_file ? parts.size() / finest_share : 1;
  for (std::size_t stretch = (parts.size() + 1) / 2; stretch >= finest;
       stretch = stretch == 1 ? 0 : (stretch + 1) / 2) {
    for (std::size_t begin = 0; begin < parts.size() && may_go_on();) {
      const std::size_t end = std::min(begin + stretch, parts.size());
      std::vector<std::string> rest(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(begin));
      rest.insert(rest.end(), parts.begin() + static_cast<std::ptrdiff_t>(end), parts.end());
      test_case candidate = smallest;
      candidate.fasta = join(rest);
      if (accept_if_failing(candidate)) {
        parts = std::move(rest);
        smaller = true;
      } else {
        begin = end;
      }
    }
  }
  return smaller;
}

bool CShrinker::join_lines() {
  test_case candidate = smallest;
  candidate.fasta.clear();
  for (const std::string& record : cut_into_records(smallest.fasta)) {
    const std::size_t header_end = std::min(record.find('\n'), record.size() - 1) + 1;
    std::string symbols = record.substr(header_end);
    std::erase(symbols, '\n');
    candidate.fasta += record.substr(0, header_end) + symbols + (symbols.empty() ? "" : "\n");
  }
  if (candidate.fasta.ends_with('\n')) candidate.fasta.pop_back();
  return candidate.fasta.size() < smallest.fasta.size() && accept_if_failing(candidate);
}

// Where the offset matters, nothing can be dropped, but what stands there may not matter.
bool CShrinker::blank_symbols() {
  bool smaller = false;
  for (std::size_t stretch = smallest.fasta.size() / 2; stretch > 0; stretch /= 2) {
    for (std::size_t begin = 0; begin < smallest.fasta.size() && may_go_on(); begin += stretch) {
      test_case candidate = smallest;
      const std::size_t end = std::min(begin + stretch, candidate.fasta.size());
      if (turn_into_Ns(candidate.fasta, begin, end)) smaller = accept_if_failing(candidate) || smaller;
    }
  }
  return smaller;
}

// Brings whole numbers nearer to zero, by half first and then by one.
bool CShrinker::reduce_numbers() {
  bool smaller = false;
  for (std::size_t i = 0; i < smallest.options.size(); ++i) {
    for (long long divisor = 2; divisor > 0; --divisor) {
      const auto number = whole_number(smallest.options[i].back());
      if (!number || *number == 0) break;
      const long long nearer = divisor == 2 ? *number / 2 : *number - (*number > 0 ? 1 : -1);
      test_case candidate = smallest;
      candidate.options[i].back() = std::to_string(nearer);
      smaller = accept_if_failing(candidate) || smaller;
    }
  }
  return smaller;
}

}  // namespace differential
