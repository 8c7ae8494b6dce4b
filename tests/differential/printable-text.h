// Bytes as text that can be printed, and as words that can be pasted into a shell.
#pragma once

#include <string>
#include <string_view>

#include "test-case.h"

namespace differential {

// Every byte that is not printable ASCII, and the backslash, becomes an octal escape of three digits; the line end
// becomes \n. The shell's printf turns the text back into the bytes ('%' is escaped for it, too).
std::string printable(std::string_view bytes);

// The words of a shell command that writes the bytes to standard output. Long runs of one symbol are written as such.
std::string printing_command(std::string_view bytes);

// The word as it stands if the shell takes it so, else in single quotes.
std::string shell_word(const std::string& word);

// The program with all words of the case, to be run in the directory of its input file.
std::string command_line(const std::string& program, const test_case& tested);

}  // namespace differential
