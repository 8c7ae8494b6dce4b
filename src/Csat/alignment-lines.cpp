#include "alignment-lines.h"

#include <algorithm>

#include "results-texts.h"

namespace {

// Aligns the symbols [begin, end), none of which is edited, with the unit from `cursor` on. Returns where it goes on.
const char* align_unedited(alignment_lines& lines, const char* begin, const char* end, const Csat& sat,
                           const char* cursor) {
  lines.sequence.append(begin, end);
  lines.markers.append(static_cast<std::size_t>(end - begin), match_mark);
  for (const char* N = std::find(begin, end, 'N'); N != end; N = std::find(N + 1, end, 'N')) {
    lines.markers[lines.markers.size() - static_cast<std::size_t>(end - N)] = N_mark;
  }
  for (std::ptrdiff_t left = end - begin; left != 0;) {
    const std::ptrdiff_t count = std::min(left, sat.unit_end - cursor);
    lines.unit.append(cursor, static_cast<std::size_t>(count));
    cursor = cursor + count == sat.unit_end ? sat.unit_begin : cursor + count;
    left -= count;
  }
  return cursor;
}

}  // namespace

void align(alignment_lines& lines, const Csat& sat) {
  const char* unit = sat.unit_successor(sat.bwd_unit_cursor);
  const char* base = sat.pos_left;
  for (const auto& edit : sat.missense_entries()) {
    if (edit.position < base || edit.position >= sat.pos_right) break;
    unit = align_unedited(lines, base, edit.position, sat, unit);
    base = edit.position;
    switch (edit.symbol) {
      case mismatch_kind:
        lines.column(*base++, edit_mark, *unit);
        unit = sat.unit_successor(unit);
        break;
      case insertion_kind:
        lines.column(*base++, edit_mark, gap_mark);
        break;
      default:
        lines.column(gap_mark, edit_mark, *unit);
        unit = sat.unit_successor(unit);
    }
  }
  align_unedited(lines, base, sat.pos_right, sat, unit);
}
