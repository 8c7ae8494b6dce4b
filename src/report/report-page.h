#pragma once

#include <cstdio>
#include <string_view>

// A page is smaller than this many bytes.
constexpr std::size_t largest_page = 20000000;

// Writes the template with the data in the place of the word @DATA@, which it holds once.
void write_report_page(std::FILE* out, std::string_view page_template, std::string_view data);

// How many bytes of data fit into a page.
std::size_t room_for_data(std::string_view page_template);
