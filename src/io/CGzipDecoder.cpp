#include "CGzipDecoder.h"

#include <algorithm>
#include <cstdio>

#include "out-of-memory.h"

namespace {

constexpr unsigned char magic[] = {0x1f, 0x8b};

// For zlib: gzip members alone, with the largest window.
constexpr int gzip_window_bits = 16 + MAX_WBITS;

constexpr const char* cut_off = "It is compressed and its end is missing";
constexpr const char* without_end_block = "It is compressed in blocks and its last ones are missing";
constexpr const char* followed_by_other_bytes = "It is compressed, but other bytes follow the compressed ones";

}  // namespace

bool CGzipDecoder::is_beginning(const char* bytes, std::size_t count) {
  return count >= std::size(magic) && static_cast<unsigned char>(bytes[0]) == magic[0] &&
         static_cast<unsigned char>(bytes[1]) == magic[1];
}

CGzipDecoder::CGzipDecoder() {
  if (inflateInit2(&stream, gzip_window_bits) != Z_OK) raise_out_of_memory();
}

CGzipDecoder::~CGzipDecoder() { inflateEnd(&stream); }

void CGzipDecoder::feed(const char* bytes, std::size_t count) {
  stream.next_in = reinterpret_cast<const Bytef*>(bytes);
  stream.avail_in = static_cast<uInt>(count);
  if (count == 0) end_file();
}

void CGzipDecoder::end_file() {
  if (state == place::in_member) return end_with(cut_off);
  end_with(is_end_block_due ? without_end_block : nullptr);
}

void CGzipDecoder::end_with(const char* its_problem) {
  state = place::at_end;
  problem = its_problem;
}

std::size_t CGzipDecoder::decode(char* to, std::size_t size) {
  stream.next_out = reinterpret_cast<Bytef*>(to);
  stream.avail_out = static_cast<uInt>(size);
  while (!has_ended() && !is_hungry() && stream.avail_out != 0) {
    if (state == place::in_front_of_member) start_member();
    if (state == place::in_member) inflate_some();
    if (state == place::in_zeros) skip_zeros();
  }
  return size - stream.avail_out;
}

void CGzipDecoder::start_member() {
  if (*stream.next_in == 0) {
    state = place::in_zeros;
    return;
  }
  if (*stream.next_in != magic[0]) return end_with(followed_by_other_bytes);
  inflateReset(&stream);
  header = {};
  header.extra = extra.data();
  header.extra_max = static_cast<uInt>(extra.size());
  inflateGetHeader(&stream, &header);
  state = place::in_member;
}

void CGzipDecoder::skip_zeros() {
  const Bytef* const end = stream.next_in + stream.avail_in;
  stream.next_in = std::find_if(stream.next_in, end, [](Bytef byte) { return byte != 0; });
  stream.avail_in = static_cast<uInt>(end - stream.next_in);
  if (stream.avail_in != 0) end_with(followed_by_other_bytes);
}

void CGzipDecoder::inflate_some() {
  switch (inflate(&stream, Z_NO_FLUSH)) {
    case Z_OK:
    case Z_BUF_ERROR:  // nothing could be done with so few bytes
      return;
    case Z_STREAM_END:
      return end_member();
    case Z_MEM_ERROR:
      raise_out_of_memory();
    default:
      return end_corrupt();
  }
}

void CGzipDecoder::end_member() {
  if (has_block_field()) is_end_block_due = stream.total_out != 0;
  state = place::in_front_of_member;
}

void CGzipDecoder::end_corrupt() {
  std::snprintf(corruption.data(), corruption.size(),
                "It is compressed and corrupt (%s), perhaps in front of this line too",
                stream.msg != nullptr ? stream.msg : "invalid data");
  end_with(corruption.data());
}

// The extra field is a row of subfields: two letters, the length of what follows in two bytes, and that.
bool CGzipDecoder::has_block_field() const {
  constexpr std::size_t head = 4;
  const std::size_t length = header.extra != Z_NULL ? header.extra_len : 0;
  for (std::size_t at = 0; at + head <= length; at += head + extra[at + 2] + extra[at + 3] * std::size_t{256}) {
    if (extra[at] == 'B' && extra[at + 1] == 'C') return true;
  }
  return false;
}
