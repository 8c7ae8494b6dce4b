#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "direction.h"
#include "look-ahead.h"
#include "symbols-ahead.h"
#include "unit-text.h"

// A state of a look-ahead, by where it is relative to the start of a window.
struct window_state {
  int offset;    // symbols from the start of the window to the position
  int diagonal;  // unit symbols minus sequence symbols consumed since, reduced as CMatchWindow::reduced does
  int score;
};

// Perfect runs ahead of a position. A look-ahead asks for many runs in the same few symbols, on the diagonals around
// that of the extension; here the 64 symbols ahead are compared with the unit once on each diagonal, and a run is then
// a bit scan. Runs that leave the window, or come to an N that is passed over, are followed symbol by symbol.
//
// For example, the unit ACGTT from its first symbol on, and a copy that lacks a T. A bit is set (x) where the symbols
// differ:
//
//   offset               0 1 2 3 4 5 6 7 8 9 ...
//   symbols ahead        A C G T A C G T T A C G
//   diagonal -1          x x x x x x x x x x x x     the unit from its last symbol on: T A C G T T A C G T T A
//   diagonal  0          . . . . x x x x . x x x     A C G T T A C G T T A C
//   diagonal +1          x x x . . . . . . . . .     C G T T A C G T T A C G
//
// The run from offset 0 on diagonal 0 is as long as the zeros from bit 0 on: 4. From there a mismatch leads to offset 5
// on diagonal 0 and an insertion to 5 on -1, where the runs are empty, and a deletion to 4 on +1, where the zeros go on
// as far as the copy is good. The look-ahead after that edit is answered from the same words: the window moves only
// when the extension is more than 16 symbols into it, or too many diagonals off.
//
// Diagonals are counted modulo the unit length, as the unit repeats.
template <typename Direction>
class CMatchWindow {
 public:
  static constexpr int size = CSymbolsAhead::size;

  // For extensions of the unit up to `end` (the position with nothing ahead). The unit must stay as it is.
  CMatchWindow(const CUnitText& its_unit, const char* its_end, bool its_passes_over_Ns, int look_ahead_depth)
      : unit(its_unit),
        end(its_end),
        passes_over_Ns(its_passes_over_Ns),
        least_diagonal(-(its_unit.length() - 1) / 2),
        most_diagonal(its_unit.length() / 2),
        radius(std::min({most_diagonal, std::min(look_ahead_depth, most_radius) + drift, most_radius})) {}

  // Where the state is in the window, which is moved to it unless it is in its first part.
  window_state enter(const extension_state& from) {
    if (start != nullptr && Direction::left_over(start, from.s) <= size / 4) {
      const auto offset = static_cast<int>(Direction::left_over(start, from.s));
      const int consumed = Direction::unit_steps(0, from.u - start_cursor);
      const int diagonal = reduced((consumed - offset) % unit.length());
      if (radius == most_diagonal || std::abs(diagonal) <= drift) return {offset, diagonal, from.score};
    }
    move_to(from);
    return {0, 0, from.score};
  }

  // Moves the state to the end of its perfect run. Returns false at the end of the sequence, where no edit can follow.
  bool run_on(window_state& at) const {
    if (at.offset < size && std::abs(at.diagonal) <= radius) {
      const int matches = std::countr_zero(ahead.different()[-at.diagonal] >> at.offset);
      if (at.offset + matches < ahead.known()) {
        at.offset += matches;
        at.score += matches;
        return true;
      }
    }
    return run_on_symbol_by_symbol(at);
  }

  // The diagonal, at most L off, in the range that stands for all.
  int reduced(int diagonal) const {
    if (diagonal > most_diagonal) return diagonal - unit.length();
    return diagonal < least_diagonal ? diagonal + unit.length() : diagonal;
  }

 private:
  static constexpr int most_radius = CSymbolsAhead::most_radius;
  static constexpr int drift = 3;  // how far an extension may leave its diagonal without the window being moved

  const CUnitText& unit;
  const char* end;
  bool passes_over_Ns;
  int least_diagonal;
  int most_diagonal;
  int radius;
  const char* start = nullptr;
  int start_cursor = 0;
  CSymbolsAhead ahead;

  void move_to(const extension_state& from) {
    start = from.s;
    start_cursor = from.u;
    ahead.compare<Direction>(from, unit, end, passes_over_Ns, radius);
  }

  bool run_on_symbol_by_symbol(window_state& at) const {
    const int L = unit.length();
    const int u = Direction::unit_steps(start_cursor, at.diagonal + at.offset) % L;
    extension_state moved{Direction::steps(start, at.offset), u < 0 ? u + L : u, at.score};
    ::run_on<Direction>(moved, unit, end, passes_over_Ns);
    at.offset = static_cast<int>(Direction::left_over(start, moved.s));
    at.score = moved.score;
    return moved.s != end;
  }
};
