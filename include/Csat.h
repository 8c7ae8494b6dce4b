#pragma once

#include <cstdio>
#include <cstdlib>
#include <span>

class CSequence_Mol;

// An object that a record may own beside its repeat. No search creates one.
class Csat_extension {
 public:
  virtual ~Csat_extension() = default;
};

// One tandem repeat of the sequence being searched.
//
// All positions are pointers into the sequence's symbol buffer, start inclusive and end exclusive, and are valid only
// while that sequence is. The unit is a stretch of the sequence itself, never a copy. Records come from and go back to
// the pool sat_alloc (CsatContainer.h), which keeps their missense arrays for reuse.
class Csat {
 public:
  // An edit: 'M' and 'I' at the sequence symbol they consume, 'D' at the first symbol after the gap.
  struct missense_entry {
    const char* position;
    char symbol;
  };

  const char* pos_left = nullptr;
  const char* pos_right = nullptr;
  const char* fwd_unit_cursor = nullptr;  // the unit symbol that the symbol at pos_right must equal
  const char* bwd_unit_cursor = nullptr;  // the unit symbol that the symbol at pos_left - 1 must equal
  const char* unit_begin = nullptr;
  const char* unit_end = nullptr;
  int score = 0;
  int mismatches = 0;
  int insertions = 0;
  int deletions = 0;
  int number_of_Ns = 0;
  Csat_extension* ext_ptr = nullptr;
  unsigned char recursion_depth = 0;
  missense_entry* missense = nullptr;
  unsigned missense_count = 0;
  unsigned missense_capacity = 0;

  Csat() = default;
  Csat(const Csat&) = delete;
  Csat& operator=(const Csat&) = delete;
  ~Csat() { std::free(missense); }

  // Makes the record the single copy of the unit [begin, end), keeping the missense array for reuse.
  void reset(const char* begin, const char* end);

  int unit_length() const { return static_cast<int>(unit_end - unit_begin); }
  // The number of sequence symbols covered.
  int span() const { return static_cast<int>(pos_right - pos_left); }
  // The length of the perfect repeat aligned to it.
  int length() const { return span() - insertions + deletions; }

  std::span<missense_entry> missense_entries() const { return {missense, missense_count}; }

  // Appends an edit. Where the array cannot grow, memory has run out (out-of-memory.h), unless a program ends
  // otherwise.
  void add_missense(const char* position, char symbol);
  // Has this function end the process then.
  static void when_edits_lack_memory(void (*end)());

  // Orders edits by position, then by letter.
  static bool lessThan_missense(const missense_entry& a, const missense_entry& b) {
    if (a.position != b.position) return a.position < b.position;
    return static_cast<signed char>(a.symbol) < static_cast<signed char>(b.symbol);
  }
  void sort_missense();

  // Steps of the two unit cursors, cyclic in the unit.
  const char* unit_successor(const char* cursor) const { return cursor + 1 == unit_end ? unit_begin : cursor + 1; }
  const char* unit_predecessor(const char* cursor) const { return cursor == unit_begin ? unit_end - 1 : cursor - 1; }

  // Gives up N's at both ends. The score and the missense list stay, so entries may then lie outside the repeat, and
  // an N that was consumed by an edit is subtracted from number_of_Ns all the same.
  void trim_Ns();

  // The share of the aligned length that matches, in percent, by the mode of counting N's; that of
  // global_N_and_perfection_mode when none is given. Ends the process with status 2 for an unknown mode.
  float perfection() const;
  float perfection(int N_and_perfection_mode) const;
  // Whether the perfection lies in the range that is reported. A perfection that is not a number does.
  static bool is_reported_perfection(float perfection);

  // "mononucleotide" to "hexanucleotide", then "7-nucleotide" and so on; overwritten by the next call.
  const char* get_repeat_name() const;
  // The same name right-aligned in its column.
  void print_repeat_name(std::FILE* out) const;

  // Writes the repeat in the chosen output format, or nothing if its perfection is out of range or its unit repeats a
  // shorter unit. Returns whether it did. Write errors are left in the stream's error flag.
  bool report_sat(std::FILE* out, CSequence_Mol& seq) const;
};

// The order of repeats: by start, then by end. Stable sorts keep repeats with both equal in their order of discovery.
inline bool lessThan_sat(const Csat* a, const Csat* b) {
  if (a->pos_left != b->pos_left) return a->pos_left < b->pos_left;
  return a->pos_right < b->pos_right;
}
