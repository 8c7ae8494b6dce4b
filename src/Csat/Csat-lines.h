#pragma once

#include "CReportText.h"
#include "Csat.h"

// Pieces of the lines that tell of a repeat.

// The name of repeats by unit length, right-aligned in its column.
void append_repeat_name(CReportText& text, int unit_length);

// What is written of a repeat in a format that the command line does not accept: flushed, the line of the compact
// format; start and end are 1-based and inclusive. In any other, writes that there is none and returns false.
bool write_unused_format(std::FILE* out, const Csat& sat, int start, int end, float perfection, const char* unit);
