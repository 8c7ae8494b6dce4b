#include "CRecordReport.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <span>

#include "out-of-memory.h"
#include "pipeline-in-order.h"

namespace {

constexpr std::ptrdiff_t least_group = 2000;
constexpr std::size_t groups_at_once = 64;

void mask_letters(char* begin, char* end, masking mask) {
  std::transform(begin, end, begin, [mask](char letter) {
    if (mask == soft_mask) return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return mask == N_mask ? 'N' : 'X';
  });
}

// Text in memory, as a stream to print to.
class CMemoryText {
 public:
  CMemoryText() : out(open_memstream(&bytes, &size)) {
    if (out == nullptr) raise_out_of_memory();
  }
  CMemoryText(const CMemoryText&) = delete;
  CMemoryText& operator=(const CMemoryText&) = delete;
  ~CMemoryText() {
    if (out != nullptr) std::fclose(out);
    std::free(bytes);
  }
  std::FILE* stream() const { return out; }
  void write_to(std::FILE* to) {
    const bool is_whole = std::ferror(out) == 0;
    if (std::fclose(std::exchange(out, nullptr)) != 0 || !is_whole) raise_out_of_memory();
    std::fwrite(bytes, 1, size, to);
  }

 private:
  char* bytes = nullptr;
  std::size_t size = 0;
  std::FILE* out;
};

// The end of the group that begins there: no repeat in front of it reaches over those after it.
repeat_list::const_iterator end_of_group(repeat_list::const_iterator begin, repeat_list::const_iterator end) {
  const char* reach = (*begin)->pos_right;
  auto it = begin;
  for (; it != end && (it - begin < least_group || (*it)->pos_left < reach); ++it) {
    reach = std::max(reach, (*it)->pos_right);
  }
  return it;
}

}  // namespace

struct CRecordReport::group {
  std::span<Csat* const> repeats;
  CMemoryText text;
  std::int64_t reported = 0;
};

void CRecordReport::print(scan_record& record, group& printed) const {
  Csat_garbagecollector pool;
  CsatContainer list(pool);
  list.records.assign(printed.repeats.begin(), printed.repeats.end());
  if (settings.removes_mostly_hidden) CSearchController::remove_mostly_hidden(list);
  for (const Csat* sat : list.records) {
    if (sat->report_sat(printed.text.stream(), record.molecule)) ++printed.reported;
    if (mask == no_mask) continue;
    char* const letters = record.letters.buffer + (sat->pos_left - record.molecule.symbols.buffer);
    mask_letters(letters, letters + sat->span(), mask);
  }
}

std::int64_t CRecordReport::write(std::FILE* out, scan_record& record, const repeat_list& repeats) {
  CSearchers::CLent lent(searchers);
  CSearchController controller(record.number, record.molecule, settings, lent.workspace());
  controller.print_opening_lines(out);
  std::int64_t reported = 0;
  auto next = repeats.begin();
  run_in_order<group>(
      groups_at_once,
      [&]() -> std::shared_ptr<group> {
        const auto begin = next;
        if (begin == repeats.end()) return nullptr;
        next = end_of_group(begin, repeats.end());
        auto cut = std::make_shared<group>();
        cut->repeats = {begin, next};
        return cut;
      },
      [&](group& printed) { print(record, printed); },
      [&](group& printed) {
        printed.text.write_to(out);
        reported += printed.reported;
      });
  controller.print_closing_line(out);
  return reported;
}

void write_letters(std::FILE* out, scan_record& record) {
  constexpr unsigned letters_a_line = 80;
  std::fprintf(out, ">%s\n", record.molecule.full_name.c_str());
  for (unsigned i = 0; i < record.letters.length; i += letters_a_line) {
    std::fwrite(record.letters.buffer + i, 1, std::min(letters_a_line, record.letters.length - i), out);
    std::fputc('\n', out);
  }
}
