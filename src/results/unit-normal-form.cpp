#include "unit-normal-form.h"

#include <algorithm>

#include "CDnaString.h"

void set_to_normal_form(std::string& normal_form, const std::string& unit) {
  CDnaString forward;
  CDnaString reversed;
  CDnaString smallest;
  forward.assign(unit.data(), unit.data() + unit.size());
  smallest.setToMinAlphaRepModCyclicPermOf(forward);
  normal_form.assign(smallest.buffer, smallest.length);
  reversed.set_to_reverse_complement_of(forward);
  smallest.setToMinAlphaRepModCyclicPermOf(reversed);
  normal_form = std::min(normal_form, std::string(smallest.buffer, smallest.length));
}
