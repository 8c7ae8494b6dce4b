#include "record-pool.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "symbol-copy.h"

void CRecordPool::place(const alignment_kernel& kernel, const symbol_range& record, CPositionSet& kept) {
  find(record);
  kept.add_part(kept_of_all(kernel), parts[current].begin);
}

bool CRecordPool::is_part(std::size_t index, const symbol_range& record) const {
  const auto length = static_cast<std::size_t>(record.end - record.begin);
  return parts[index].length == length && std::equal(record.begin, record.end, symbols.data() + parts[index].begin);
}

// Records that ask for nothing are left out, so a later part may be the one.
void CRecordPool::find(const symbol_range& record) {
  for (std::size_t index = current; index < parts.size(); ++index) {
    if (!is_part(index, record)) continue;
    current = index;
    return;
  }
  lay_out(record);
}

void CRecordPool::lay_out(const symbol_range& record) {
  constexpr std::size_t most_at_once = longest_short_record + 64;
  symbols.resize(wanted_symbols + most_at_once);
  used = 0;
  parts.clear();
  current = 0;
  tested.clear();
  planes = {};
  std::copy(record.begin, record.end, symbols.data());
  add(static_cast<std::size_t>(record.end - record.begin));
  const char* header = text_ahead.data();
  while (header != nullptr && used < wanted_symbols) header = add_from_text(header);
}

void CRecordPool::add(std::size_t length) {
  parts.push_back({used, length});
  used += length;
}

// Adds the record that begins here, if it is short, ends some bytes before the text and consists of plain symbols and
// line ends. Returns where the one after it begins, or null.
const char* CRecordPool::add_from_text(const char* header) {
  const char* const end = text_ahead.data() + text_ahead.size();
  if (header == end || *header != '>') return nullptr;
  const char* from = find_line_end(header, end);
  std::size_t length = 0;
  while (from != end && *from != '>') {
    if (*from != '\n' && *from != '\r') return nullptr;
    ++from;
    const std::size_t room = longest_short_record + 64 - length;
    const auto count = std::min(room, static_cast<std::size_t>(end - from));
    const copied_lines copied = copy_symbol_lines(from, count, symbols.data() + used + length);
    from += copied.consumed;
    length += copied.stored;
    if (length > longest_short_record) return nullptr;
  }
  if (from == end) return nullptr;
  add(length);
  return from;
}

const CPositionSet& CRecordPool::kept_of_all(const alignment_kernel& kernel) {
  const auto it = std::find_if(tested.begin(), tested.end(), [&](const auto& entry) { return entry.first == &kernel; });
  if (it != tested.end()) return it->second;
  const auto margin = static_cast<std::size_t>(kernel.reach);
  if (planes.length() == 0 || planes.margin() < margin) planes.build(symbols.data(), used, margin);
  tested.emplace_back(&kernel, CPositionSet(used));
  CPositionSet& kept = tested.back().second;
  kernel.run(planes, kept);
  test_again(kernel.bound, kept);
  return kept;
}

// In batches, which cost less than following the paths of one candidate. Units that no symbol follows are none.
void CRecordPool::test_again(const alignment_bound& bound, CPositionSet& kept) {
  std::array<const char*, CBatchBound::most_candidates> positions{};
  const std::size_t end = used - std::min<std::size_t>(used, bound.L);
  for (std::size_t p = kept.next(0); p < end;) {
    std::size_t count = 0;
    for (; p < end && count != positions.size(); p = kept.next(p + 1)) positions[count++] = symbols.data() + p;
    const symbol_range all{symbols.data(), symbols.data() + used};
    const std::uint64_t bits = batch.may_reach(bound, all, positions.data(), count, true);
    for (std::size_t i = 0; i < count; ++i) {
      if ((bits >> i & 1) == 0) kept.remove(static_cast<std::size_t>(positions[i] - symbols.data()));
    }
  }
}
