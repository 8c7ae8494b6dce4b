#pragma once

#include <string>
#include <string_view>

// A text from outside (a name, a header, a word of the command line) as it may be shown on a terminal: control
// characters, characters that change the direction of writing, and bytes that are no UTF-8 stand as escapes such as
// \x1b, so that no text can move the cursor, set colours or look like another. All else is as it was.
std::string shown(std::string_view text);

// The same for a text of several lines, whose line ends stay.
std::string shown_lines(std::string_view text);
