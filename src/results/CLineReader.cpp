#include "CLineReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>
#include <system_error>

namespace {

constexpr std::size_t block_size = std::size_t{1} << 16;

}  // namespace

bool CLineReader::open(const std::string& name) {
  errno = 0;
  source.open(name.c_str());
  if (!source.is_open()) {
    reason = errno != 0 ? std::strerror(errno) : "The name leads to no file";
    return false;
  }
  std::error_code ignored;
  if (std::filesystem::is_directory(name, ignored)) reason = std::strerror(EISDIR);
  return reason.empty();
}

CLineReader::outcome CLineReader::next() { return next_up_to(std::numeric_limits<std::size_t>::max()); }

CLineReader::outcome CLineReader::next_up_to(std::size_t longest) {
  line.clear();
  cut = true;
  while (block_pos != block.size() || refill()) {
    if (line.empty()) ++line_number;
    const std::size_t room = std::min(block.size() - block_pos, longest - line.size());
    const std::size_t end = std::string_view(block).substr(block_pos, room).find('\n');
    const bool is_whole = end != std::string_view::npos;
    const std::size_t count = is_whole ? end : room;
    line.append(block, block_pos, count);
    block_pos += count + (is_whole ? 1 : 0);
    cut = !is_whole;
    if (is_whole || line.size() == longest) return outcome::line;
  }
  if (!reason.empty()) return outcome::failed;
  return line.empty() ? outcome::end_of_file : outcome::line;
}

// What came before the error is handed out first.
bool CLineReader::refill() {
  block.resize(block_size);
  block.resize(static_cast<std::size_t>(source.read(block.data(), static_cast<std::streamsize>(block_size))));
  block_pos = 0;
  if (block.empty() && source.fault != nullptr) reason = source.fault;
  return !block.empty();
}
