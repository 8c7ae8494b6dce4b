#pragma once

#include <string>
#include <vector>

#include "CConvertedFile.h"

// The files that a scan writes, which get their names when they are whole.

// Opens the file; an empty name is standard output. Returns false after a message when that is impossible, when it is
// one of the files to read, or when it exists and need not be replaced. `threads` compress.
bool open_output(CConvertedFile& file, const std::string& name, const std::vector<std::string>& read_files,
                 bool may_replace, int threads);

// Closes the file and gives it its name. Returns false after a message when something could not be written.
bool finish_output(CConvertedFile& file);

// Writes the tabix index of a finished file, as a .csi where the longest sequence is too long for a .tbi, and removes
// what the other kind says of a former file. Returns false behind a message when that is impossible. `is_bed`: else
// GFF3.
bool write_index(const std::string& file_name, bool is_bed, unsigned longest_sequence);

// Whether the file has an index already.
bool has_index(const std::string& file_name);
