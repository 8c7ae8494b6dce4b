#pragma once

#include <zlib.h>

#include <stdexcept>
#include <string>

// Compressed texts, of one member each; a file is one of them or several after each other.

// What the head of a member may hold beside what it must.
struct gzip_head {
  std::string extra;  // subfields: two letters, the length in two bytes, the lowest first, and that
  std::string name;
  std::string comment;
  bool has_checksum = false;
};

namespace gzip_detail {

inline Bytef* bytes_of(const std::string& text) { return reinterpret_cast<Bytef*>(const_cast<char*>(text.data())); }

inline Bytef* text_or_none(const std::string& text) { return text.empty() ? nullptr : bytes_of(text); }

inline gz_header header_of(const gzip_head& head) {
  gz_header header{};
  header.os = 255;
  header.extra = text_or_none(head.extra);
  header.extra_len = static_cast<uInt>(head.extra.size());
  header.name = text_or_none(head.name);
  header.comment = text_or_none(head.comment);
  header.hcrc = head.has_checksum ? 1 : 0;
  return header;
}

}  // namespace gzip_detail

// Level 0 stores the text as it is, 9 compresses it most.
inline std::string gzip_member(const std::string& text, const gzip_head& head = {}, int level = 9) {
  z_stream stream{};
  gz_header header = gzip_detail::header_of(head);
  if (deflateInit2(&stream, level, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK ||
      deflateSetHeader(&stream, &header) != Z_OK) {
    throw std::runtime_error("deflate does not start");
  }
  std::string member(deflateBound(&stream, static_cast<uLong>(text.size())) + 100, '\0');
  stream.next_in = gzip_detail::bytes_of(text);
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = gzip_detail::bytes_of(member);
  stream.avail_out = static_cast<uInt>(member.size());
  const int outcome = deflate(&stream, Z_FINISH);
  member.resize(stream.total_out);
  deflateEnd(&stream);
  if (outcome != Z_STREAM_END) throw std::runtime_error("deflate does not end");
  return member;
}

// A block of a file of bgzip: its length, less one, stands in the head. At most 60000 bytes of text.
inline std::string bgzip_block(const std::string& text) {
  constexpr std::size_t place_of_length = 16;
  using namespace std::string_literals;
  std::string block = gzip_member(text, {.extra = "BC\2\0\0\0"s, .name = "", .comment = ""});
  const std::size_t length = block.size() - 1;
  block[place_of_length] = static_cast<char>(length % 256);
  block[place_of_length + 1] = static_cast<char>(length / 256);
  return block;
}

// The whole file, in blocks of so many bytes, with the empty block at its end.
inline std::string bgzip_file(const std::string& text, std::size_t block_size) {
  std::string file;
  for (std::size_t i = 0; i < text.size(); i += block_size) file += bgzip_block(text.substr(i, block_size));
  return file + bgzip_block("");
}
