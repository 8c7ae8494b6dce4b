#include "quarvo-masked.h"

#include <algorithm>

void write_masked_record(std::FILE* out, CSequence_Mol& record, const std::list<Csat*>& repeats) {
  constexpr unsigned symbols_a_line = 80;
  char* const symbols = record.symbols.buffer;
  for (const Csat* sat : repeats) std::fill_n(symbols + (sat->pos_left - symbols), sat->span(), 'X');

  std::fprintf(out, ">%s\n", record.full_name.c_str());
  for (unsigned i = 0; i < record.symbols.length; i += symbols_a_line) {
    std::fwrite(symbols + i, 1, std::min(symbols_a_line, record.symbols.length - i), out);
    std::fputc('\n', out);
  }
  std::fflush(out);
}
