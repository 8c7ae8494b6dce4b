#pragma once

#include <zlib.h>

#include <array>
#include <cstddef>

// The text of a gzip file, from its bytes as they come: one compressed member or several, each checked against the
// length and the checksum after it, and perhaps zeros after the last one. Anything else is an error.
//
// A member with a "BC" extra field is a block of the blocked format of bgzip. Such blocks end with an empty one; where
// it is missing, blocks are missing. What cannot be told is a file cut off exactly between two members of other kinds.
//
// Needs about 120 kB, whatever the length of the text. Not copyable.
class CGzipDecoder {
 public:
  // Whether a file that begins with these bytes is compressed.
  static bool is_beginning(const char* bytes, std::size_t count);

  // Throws std::bad_alloc, as decode does.
  CGzipDecoder();
  CGzipDecoder(const CGzipDecoder&) = delete;
  CGzipDecoder& operator=(const CGzipDecoder&) = delete;
  ~CGzipDecoder();

  // True when decode needs the next bytes of the file.
  bool is_hungry() const { return stream.avail_in == 0; }

  // The next bytes of the file, which must stay where they are until the decoder is hungry again. None of them: that
  // is the end of the file. Only for a hungry decoder.
  void feed(const char* bytes, std::size_t count);

  // Decodes up to `size` bytes, as far as the bytes fed go. Returns their number, which may be 0. What comes in front
  // of corrupt data has not been checked.
  std::size_t decode(char* to, std::size_t size);

  // True past the end of the text and after an error.
  bool has_ended() const { return state == place::at_end; }

  // What is wrong with the file, a text that lasts as long as the decoder, or null.
  const char* fault() const { return problem; }

 private:
  enum class place { in_front_of_member, in_member, in_zeros, at_end };

  static constexpr std::size_t longest_extra = 65535;

  z_stream stream{};
  gz_header header{};
  place state = place::in_front_of_member;
  bool is_end_block_due = false;
  const char* problem = nullptr;
  std::array<char, 160> corruption{};
  std::array<Bytef, longest_extra> extra{};

  void end_file();
  void start_member();
  void end_member();
  void skip_zeros();
  void inflate_some();
  void end_with(const char* its_problem);
  void end_corrupt();
  bool has_block_field() const;
};
