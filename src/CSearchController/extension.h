#pragma once

#include "CShortcuts.h"
#include "Csat.h"
#include "scoring.h"
#include "unit-text.h"

// The imperfect extension of a repeat, in one direction: match, or make the edit whose look-ahead promises most, and
// end at the best-scoring point.
//
// The sequence is read up to the position `end` to the right, or down to it to the left. Nothing but the record
// changes; `unit` is the text of its unit. `shortcuts` are those of a search under way, or say "as defined".
void extend_right(Csat& sat, const scoring& rules, const CUnitText& unit, const char* end, CShortcuts& shortcuts);
void extend_left(Csat& sat, const scoring& rules, const CUnitText& unit, const char* end, CShortcuts& shortcuts);
