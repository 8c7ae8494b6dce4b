#pragma once

#include "CReportText.h"
#include "Csat.h"

// Pieces of the lines that tell of a repeat.

// The name of repeats by unit length, right-aligned in its column.
void append_repeat_name(CReportText& text, int unit_length);

// Writes the line of the compact format to `text`; start and end are 1-based and inclusive.
void append_compact_line(CReportText& text, const Csat& sat, int start, int end, float perfection, const char* unit);
