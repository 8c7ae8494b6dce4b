#pragma once

#include <cstddef>

// Asks the system to back the memory [begin, begin + bytes) with large pages, before it is written for the first time:
// fewer page faults, and cheaper access all over it. A hint that changes nothing else; ignored for small ranges and by
// systems that know no such pages.
void prefer_huge_pages(void* begin, std::size_t bytes);
