#pragma once

#include <cstddef>
#include <string_view>

// As many of the first bytes of a file as are looked at.
inline constexpr std::size_t foreign_format_bytes = 512;

// What a file is that begins with these bytes, and what to do with it: a sentence or two for the user, without a line
// end. Null when the bytes do not tell. Only bytes with which neither FASTA nor results can begin tell anything; text
// of other kinds does not.
const char* foreign_format(std::string_view first_bytes);
