#pragma once

#include <string>
#include <string_view>

#include "results-records.h"

// The lines that tell of one repeat. Each function fills its fields of `repeat` from one whole line and leaves the
// others. Returns false when the line is not one that a run with these settings writes; the fields are then undefined.

// The line of formats 0 and 1: place, size, score, perfection, in format 1 the edits, and the unit.
bool parse_repeat_line(std::string_view line, const results_header& header, results_repeat& repeat);

// The second line of format 1: "Missense: " and a list of edits.
bool parse_edit_line(std::string_view line, results_repeat& repeat);

// The line of print mode 1: the sequence, with flanks when the header says so.
bool parse_sequence_line(std::string_view line, const results_header& header, results_repeat& repeat);

// The three lines of print mode 2, flanks included; `repeat` gets its sequence, its flanks and the alignment.
bool parse_alignment(std::string_view sequence, std::string_view markers, std::string_view unit,
                     const results_header& header, results_repeat& repeat);

// A line of format 3, with the name of the sequence.
bool parse_table_line(std::string_view line, const results_header& header, std::string& name, results_repeat& repeat);
