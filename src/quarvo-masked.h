#ifndef QUARVO_QUARVO_MASKED_H
#define QUARVO_QUARVO_MASKED_H

#include <cstdio>
#include <list>

#include "CSequence_Mol.h"
#include "Csat.h"

// Overwrites every symbol that a repeat covers with 'X' and writes the record as FASTA, 80 symbols a line, flushed.
// The repeats' positions must point into the record.
void write_masked_record(std::FILE* out, CSequence_Mol& record, const std::list<Csat*>& repeats);

#endif
