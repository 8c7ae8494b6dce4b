#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "edit.h"

// Choices of edits that were made before in the same record.
//
// Idea. Away from the ends of the unit a look-ahead compares the symbols of the record with others of the same record,
// at a distance: the unit is a stretch of it. So its choice is a function of the place where it begins, the distance
// and the direction, whichever unit these symbols belong to, and the paths of candidates next to each other, or of unit
// lengths next to each other, run together:
//
//   record            ..ACGTTGCAT..........ACGTAGCAT..
//   unit (p, L)       [ACGTTGCA.....]          ^ mismatch; the unit symbol is at the distance d
//   unit (p + 1, L)    [CGTTGCAT.....]         ^ the same mismatch, the same d, the same look-ahead
//
// What else a choice depends on must not matter: the floor, which no edit of the look-ahead may meet (the caller sees
// to that), and where the unit begins anew, or the record ends, which the look-ahead must not have come to. So a choice
// is kept with how far it looked, and holds where the unit and the record go on as far.
//
// A table without chains: what is kept later replaces what has the same slot. Memory: 0.8 megabytes, from the first
// choice that is kept.
class CRememberedChoices {
 public:
  // Shorter units begin anew within most look-aheads.
  static constexpr int shortest_unit = 40;

  // Where a choice is made: the position in the record, and how far after the unit symbol that comes next it lies;
  // positive to the right, negative to the left.
  struct place {
    const char* s;
    std::int32_t distance;
    bool operator==(const place&) const = default;
  };

  // The choice, and how many symbols ahead were looked at.
  struct choice {
    std::uint16_t reach;
    edit chosen;
  };

  // Forgets all, since another record begins. Costs nothing, as there are files of many short records.
  void forget() {
    if (++record == 0) {
      slots.clear();
      record = 1;
    }
  }

  // nullptr if none is known.
  const choice* find(const place& at) const {
    if (slots.empty()) return nullptr;
    const slot& found = slots[index_of(at)];
    return found.record == record && found.at == at ? &found.kept : nullptr;
  }

  void keep(const place& at, const choice& made) {
    if (slots.empty()) slots.resize(size);
    slots[index_of(at)] = {at, record, made};
  }

 private:
  struct slot {
    place at{nullptr, 0};
    std::uint32_t record = 0;  // none
    choice kept{0, edit::none};
  };

  static constexpr std::size_t size = std::size_t{1} << 15;
  static std::size_t index_of(const place& at) {
    const auto key = reinterpret_cast<std::uintptr_t>(at.s) * 31 +
                     std::uint64_t{static_cast<std::uint32_t>(at.distance)} * 2654435769U;
    return (key ^ key >> 15) % size;
  }

  std::vector<slot> slots;
  std::uint32_t record = 1;  // counts the records, and begins again
};
