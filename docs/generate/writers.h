#pragma once

#include <string>

#include "command-page.h"

// The documents that are written for a command, each as the text of the whole file.

// A man page in the man(7) macros. `date` is that of the release, as YYYY-MM-DD.
std::string man_page(const command_page& page, const std::string& date);

// A completion for bash 4 or later, which needs nothing but bash.
std::string bash_completion(const command_page& page);

// A completion for zsh, a file for a directory of its fpath.
std::string zsh_completion(const command_page& page);
