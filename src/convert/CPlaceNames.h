#pragma once

#include <string>

#include "results-records.h"
#include "sequence-names.h"
#include "text-output.h"

// Names that no two repeats share: the place counted from 1, as gattaca:5-74. Repeats of one place follow each other,
// and all but the first get a number after it.
class CPlaceNames {
 public:
  // Returns false when a sequence of this name came before.
  bool begin_sequence(const results_sequence& its_sequence) {
    sequence = plain_name(its_sequence.name);
    return seen.add(sequence);
  }

  // The name of the next repeat of the sequence begun last.
  std::string next(const results_repeat& repeat) {
    std::string name = sequence + ':';
    append_number(name, repeat.start);
    name += '-';
    append_number(name, repeat.end);
    at_place = name == place ? at_place + 1 : 1;
    place = name;
    return at_place == 1 ? name : name + ':' + std::to_string(at_place);
  }

  const std::string& sequence_name() const { return sequence; }

 private:
  CNameRegister seen;
  std::string sequence;
  std::string place;  // of the repeat before
  int at_place = 0;   // repeats there so far
};
