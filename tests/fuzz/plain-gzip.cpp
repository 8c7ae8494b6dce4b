#include "plain-gzip.h"

#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "support/gzip-text.h"

namespace {

// What is left of the file, without the member that was read.
struct member {
  std::string text;
  std::string_view rest;
  bool is_intact = false;
};

member read_member(std::string_view bytes) {
  z_stream stream{};
  if (inflateInit2(&stream, 16 + MAX_WBITS) != Z_OK) std::abort();
  member found;
  int outcome = Z_OK;
  stream.next_in = reinterpret_cast<const Bytef*>(bytes.data());
  stream.avail_in = static_cast<uInt>(bytes.size());
  while (outcome == Z_OK) {
    const std::size_t length = found.text.size();
    found.text.resize(2 * length + 1000);
    stream.next_out = reinterpret_cast<Bytef*>(found.text.data() + length);
    stream.avail_out = static_cast<uInt>(found.text.size() - length);
    outcome = inflate(&stream, Z_FINISH);
    found.text.resize(found.text.size() - stream.avail_out);
    if (outcome == Z_BUF_ERROR && stream.avail_out == 0) outcome = Z_OK;
  }
  found.is_intact = outcome == Z_STREAM_END;
  found.rest = bytes.substr(bytes.size() - stream.avail_in);
  inflateEnd(&stream);
  return found;
}

unsigned byte_at(std::string_view bytes, std::size_t place) { return static_cast<unsigned char>(bytes[place]); }

// Of an intact member: whether one of the subfields in its head is named BC.
bool is_block(std::string_view bytes) {
  constexpr unsigned has_extra_field = 4;
  if ((byte_at(bytes, 3) & has_extra_field) == 0) return false;
  std::string_view subfields = bytes.substr(12, byte_at(bytes, 10) + 256 * byte_at(bytes, 11));
  while (subfields.size() >= 4) {
    if (subfields.starts_with("BC")) return true;
    subfields.remove_prefix(
        std::min<std::size_t>(subfields.size(), 4 + byte_at(subfields, 2) + 256 * byte_at(subfields, 3)));
  }
  return false;
}

}  // namespace

bool is_gzip(const std::string& bytes) { return bytes.starts_with("\x1f\x8b"); }

plain_gzip read_gzip_plainly(const std::string& bytes) {
  plain_gzip file;
  std::string_view rest = bytes;
  bool is_open_row_of_blocks = false;
  while (rest.find_first_not_of('\0') != std::string_view::npos) {
    const member found = read_member(rest);
    file.text += found.text;
    if (!found.is_intact) return file;
    if (is_block(rest)) is_open_row_of_blocks = !found.text.empty();
    rest = found.rest;
  }
  file.is_intact = !is_open_row_of_blocks;
  return file;
}

std::string compressed(const std::string& text, unsigned layout) {
  const std::string first = text.substr(0, text.size() / 3);
  const std::string second = text.substr(text.size() / 3);
  switch (layout % 4) {
    case 0:
      return gzip_member(text);
    case 1:
      return gzip_member(first) + gzip_member("") + gzip_member(second, {}, 0);
    case 2:
      return bgzip_file(text, std::max<std::size_t>(text.size() / 5, 1));
    default:
      return gzip_member(first) + bgzip_file(second, 50000) + std::string(700, '\0');
  }
}
