#pragma once

#include <cstdio>
#include <list>
#include <string>

#include "CSequence_Mol.h"
#include "Csat.h"

// Overwrites every symbol that a repeat covers with 'X' and writes the record as FASTA, 80 symbols a line, flushed.
// The repeats' positions must point into the record.
void write_masked_record(std::FILE* out, CSequence_Mol& record, const std::list<Csat*>& repeats);

// Whether a file may be made beside the input of that name: not where the input is a pipe or a device, and not where
// the name is one of the system's own for an open file, such as /dev/stdin or /dev/fd/63.
bool can_have_masked_file(const std::string& input_name);
