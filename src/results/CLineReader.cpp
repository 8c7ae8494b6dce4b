#include "CLineReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

namespace {

constexpr std::size_t block_size = std::size_t{1} << 16;

}  // namespace

CLineReader::~CLineReader() {
  if (file != nullptr) std::fclose(file);
}

bool CLineReader::open(const std::string& name) {
  file = std::fopen(name.c_str(), "rbe");
  if (file == nullptr) {
    reason = std::strerror(errno);
    return false;
  }
  std::setvbuf(file, nullptr, _IONBF, 0);
  return true;
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
    block_pos += count;
    if (is_whole) {
      ++block_pos;
      cut = false;
      return outcome::line;
    }
    if (line.size() == longest) return outcome::line;
  }
  if (!reason.empty()) return outcome::failed;
  return line.empty() ? outcome::end_of_file : outcome::line;
}

// What came before a read error is handed out first.
bool CLineReader::refill() {
  if (!reason.empty()) return false;
  block.resize(block_size);
  block_pos = 0;
  errno = 0;
  block.resize(std::fread(block.data(), 1, block_size, file));
  if (std::ferror(file) != 0) reason = std::strerror(errno);
  return !block.empty();
}
