#ifndef QUARVO_BGZF_STREAM_H
#define QUARVO_BGZF_STREAM_H

#include <cstdio>

// A stream whose bytes reach the open file compressed by BGZF: gzip in blocks, which tabix indexes. Closing the stream
// writes what is left and the block that ends such a file; the descriptor stays open. Returns null when that is
// impossible, with the reason in errno. More than one thread compress beside the one that writes.
std::FILE* open_bgzf_stream(int descriptor, int threads = 1);

#endif
