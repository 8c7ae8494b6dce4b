#include "foreign-format.h"

#include <array>

namespace {

using namespace std::literals;

struct format_row {
  std::string_view bytes;  // at the place
  std::size_t place;
  const char* advice;
};

constexpr const char* xz = "It is compressed by xz, not by gzip. Please decompress it first, for example with xz -d.";
constexpr const char* bzip2 =
    "It is compressed by bzip2, not by gzip. Please decompress it first, for example with bzip2 -d.";
constexpr const char* zstd =
    "It is compressed by zstd, not by gzip. Please decompress it first, for example with zstd -d.";
constexpr const char* lz4 =
    "It is compressed by lz4, not by gzip. Please decompress it first, for example with lz4 -d.";
constexpr const char* lzip =
    "It is compressed by lzip, not by gzip. Please decompress it first, for example with lzip -d.";
constexpr const char* compress =
    "It is compressed by compress, not by gzip. Please decompress it first, for example with gzip -d.";
constexpr const char* zip = "It is a zip archive. Please extract it first, for example with unzip.";
constexpr const char* seven_zip = "It is a 7-Zip archive. Please extract it first, for example with 7z x.";
constexpr const char* tar = "It is a tar archive. Please extract it first, for example with tar -xf.";
constexpr const char* two_bit = "It is in 2bit format. Please convert it first, for example with twoBitToFa.";
constexpr const char* bam = "It is in BAM format. Please convert it first, for example with samtools fasta.";
constexpr const char* cram = "It is in CRAM format. Please convert it first, for example with samtools fasta.";
constexpr const char* utf_16 =
    "It is text in UTF-16. Please save it as plain text first, for example with iconv -f UTF-16 -t UTF-8.";
constexpr const char* utf_32 =
    "It is text in UTF-32. Please save it as plain text first, for example with iconv -f UTF-32 -t UTF-8.";
constexpr const char* byte_order_mark =
    "It begins with the byte order mark of UTF-8. Please save it without one first, for example with "
    "sed '1s/^\\xEF\\xBB\\xBF//'.";

// Of formats that begin alike the longer one comes first.
constexpr std::array formats{
    format_row{"\xFD"
               "7zXZ\0"sv,
               0, xz},
    format_row{"\x31\x41\x59\x26\x53\x59"sv, 4, bzip2},  // a block after "BZh9"
    format_row{"\x17\x72\x45\x38\x50\x90"sv, 4, bzip2},  // no block
    format_row{"\x28\xB5\x2F\xFD"sv, 0, zstd},
    format_row{"\x2A\x4D\x18"sv, 1, zstd},  // a frame to be skipped
    format_row{"\x04\x22\x4D\x18"sv, 0, lz4},
    format_row{"LZIP\0"sv, 0, lzip},
    format_row{"LZIP\1"sv, 0, lzip},
    format_row{"\x1F\x9D"sv, 0, compress},
    format_row{"PK\3\4"sv, 0, zip},
    format_row{"PK\5\6"sv, 0, zip},
    format_row{"PK\7\x8"sv, 0, zip},
    format_row{"7z\xBC\xAF\x27\x1C"sv, 0, seven_zip},
    format_row{"ustar"sv, 257, tar},
    format_row{"\x43\x27\x41\x1A"sv, 0, two_bit},
    format_row{"\x1A\x41\x27\x43"sv, 0, two_bit},
    format_row{"BAM\1"sv, 0, bam},
    format_row{"CRAM\2"sv, 0, cram},
    format_row{"CRAM\3"sv, 0, cram},
    format_row{"CRAM\4"sv, 0, cram},
    format_row{"\xFF\xFE\0\0"sv, 0, utf_32},
    format_row{"\0\0\xFE\xFF"sv, 0, utf_32},
    format_row{"\xFF\xFE"sv, 0, utf_16},
    format_row{"\xFE\xFF"sv, 0, utf_16},
    format_row{"\xEF\xBB\xBF"sv, 0, byte_order_mark},
};

// White space, '#' and '>' begin FASTA; results begin with '#'.
bool may_begin_text(std::string_view bytes) { return " \t\n\v\f\r#>"sv.find(bytes[0]) != std::string_view::npos; }

}  // namespace

const char* foreign_format(std::string_view first_bytes) {
  if (first_bytes.empty() || may_begin_text(first_bytes)) return nullptr;
  for (const format_row& format : formats) {
    if (first_bytes.size() < format.place) continue;
    if (first_bytes.substr(format.place).starts_with(format.bytes)) return format.advice;
  }
  return nullptr;
}
