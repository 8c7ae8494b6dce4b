// What a compressed file holds, found with all its bytes at hand: each member is inflated in one call.
#pragma once

#include <string>

struct plain_gzip {
  std::string text;        // up to the fault if there is one
  bool is_intact = false;  // to its last byte
};

// Whether the file is taken for compressed at all.
bool is_gzip(const std::string& bytes);

plain_gzip read_gzip_plainly(const std::string& bytes);

// The text as a compressed file. The lowest bits of `layout` choose among one member, several members, blocks and
// members with zeros after.
std::string compressed(const std::string& text, unsigned layout);
