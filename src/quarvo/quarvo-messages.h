#pragma once

#include <cstdio>
#include <ctime>
#include <string_view>

#include "search-workspace.h"

// What the program says about the run itself: banner, progress lines and closing texts. Everything but creator_message
// and print_closing_line goes to standard error, which is flushed after every message.

// Base of the elapsed time in progress lines, in seconds; set once at the start of a run.
extern std::time_t time_analysis_started;

// Writes the welcome banner.
void quarvo_welcome(std::FILE* out);

// Writes which program computed the results, each line after the prefix.
void creator_message(std::FILE* out, const char* prefix);

// Writes a progress line. The name is a NUL-terminated text, cut to 70 bytes; the mark is not used.
void report_status(unsigned sequence_number, const char* name, unsigned pattern_length, char mark);

// True when a progress line is due, at most once a minute; the next one is then due a minute later.
bool check_report_status();

// The progress of a search: a line for each of its steps, and the progress lines that are due.
search_progress progress_lines(unsigned sequence_number, const char* name);

// Restarts the progress interval.
void update_report_time();

// Writes the last line of complete results, by the output format.
void print_closing_line(std::FILE* results);

// Writes the closing texts of a run that did all it was asked to do. Nothing may be left that could still fail.
void good_bye();

// The closing text of a run that the user stopped.
inline constexpr std::string_view stopped_by_user = "\nAnalysis has been stopped by the user.\n\n";

// Writes the closing text for a run that ended with `code`: an error (negative) or a stop by the user (positive).
void good_bye_on_error(int code);
