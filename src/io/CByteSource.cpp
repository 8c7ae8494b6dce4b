#include "CByteSource.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "foreign-format.h"

void CByteSource::open(const char* name) {
  std::ifstream::open(name);
  fault = nullptr;
  bytes_read = 0;
  bytes_expected = size_when_opened();
  is_at_start = true;
  its_foreign_kind = nullptr;
  decoder.reset();
}

std::streamoff CByteSource::size_when_opened() {
  const std::streamoff size = seek(std::ios_base::end);
  if (size > 0) seek(std::ios_base::beg);
  return std::max<std::streamoff>(size, 0);
}

std::streamsize CByteSource::read(char* to, std::streamsize size) {
  if (is_at_start) return read_first(to, size);
  return decoder != nullptr ? decode(to, size) : read_raw(to, size);
}

std::streamsize CByteSource::read_first(char* to, std::streamsize size) {
  is_at_start = false;
  std::streamsize count = read_raw(to, size);
  if (CGzipDecoder::is_beginning(to, static_cast<std::size_t>(count))) {
    start_decoder(to, count, size);
    count = decode(to, size);
  }
  its_foreign_kind = foreign_format({to, static_cast<std::size_t>(count)});
  return count;
}

void CByteSource::start_decoder(const char* first_bytes, std::streamsize count, std::streamsize size) {
  compressed.resize(static_cast<std::size_t>(size));
  std::copy_n(first_bytes, count, compressed.begin());
  decoder = std::make_unique<CGzipDecoder>();
  decoder->feed(compressed.data(), static_cast<std::size_t>(count));
}

std::streamsize CByteSource::decode(char* to, std::streamsize size) {
  std::streamsize done = 0;
  while (done < size && !decoder->has_ended()) {
    if (decoder->is_hungry()) {
      const std::streamsize count = read_raw(compressed.data(), static_cast<std::streamsize>(compressed.size()));
      decoder->feed(compressed.data(), static_cast<std::size_t>(count));
    }
    done += static_cast<std::streamsize>(decoder->decode(to + done, static_cast<std::size_t>(size - done)));
  }
  if (fault == nullptr) fault = decoder->fault();
  return done;
}

// The next bytes of the file itself.
std::streamsize CByteSource::read_raw(char* to, std::streamsize size) {
  errno = 0;
  std::ifstream::read(to, size);
  const std::streamsize count = count_read(size);
  bytes_read += count;
  if (count == 0 && fault == nullptr && bytes_read < bytes_expected) {
    fault = "It has become shorter while it was read";
  }
  return count;
}

// What came before an error is in its place, but the stream does not count it; the position in the file does. The
// stream stays bad after an error.
std::streamsize CByteSource::count_read(std::streamsize size) {
  const int error = errno;
  if (!std::ifstream::bad()) return std::ifstream::gcount();
  if (error == EISDIR) {
    std::ifstream::clear();
    bytes_expected = 0;
    return 0;
  }
  if (fault == nullptr) fault = error != 0 ? std::strerror(error) : "It cannot be read";
  return std::clamp<std::streamoff>(seek(std::ios_base::cur) - bytes_read, 0, size);
}
