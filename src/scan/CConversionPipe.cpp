#include "CConversionPipe.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>

#include "CConversion.h"
#include "CResultsReader.h"

bool CConversionPipe::open(std::FILE* to, const conversion_settings& settings) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  fcntl(ends[1], F_SETPIPE_SZ, 1 << 20);
  read_end = ends[0];
  in = fdopen(ends[1], "w");
  converter = std::thread([this, to, settings] { convert(to, settings); });
  return in != nullptr;
}

// What is not read any more is a write error on the other side.
void CConversionPipe::convert(std::FILE* to, const conversion_settings& settings) {
  CResultsReader results;
  const std::unique_ptr<CConversion> conversion = make_conversion(settings);
  const auto is_well = [&](bool outcome) {
    if (outcome) return true;
    status = conversion->status();
    problem = conversion->error();
    return false;
  };
  bool is_open = results.open("/dev/fd/" + std::to_string(read_end));
  close(read_end);
  if (is_open) is_open = is_well(conversion->begin(to, results.header()));
  while (is_open && std::ferror(to) == 0) {
    switch (results.next()) {
      case CResultsReader::item::sequence:
        is_open = is_well(conversion->begin_sequence(to, results.sequence()));
        break;
      case CResultsReader::item::repeat:
        is_open = is_well(conversion->add(to, results.repeat()));
        break;
      case CResultsReader::item::end:
        is_well(conversion->finish(to));
        return;
      default:
        is_open = false;
    }
  }
  if (status != 0 || !results.error()) return;
  status = companion_status::of(results.error());
  problem = results.error_text();
}

int CConversionPipe::finish() {
  if (in != nullptr) std::fclose(in);
  in = nullptr;
  if (converter.joinable()) converter.join();
  return status;
}
