#include "report-page.h"

namespace {

constexpr std::string_view place_of_data = "@DATA@";

void write_text(std::FILE* out, std::string_view text) { std::fwrite(text.data(), 1, text.size(), out); }

}  // namespace

void write_report_page(std::FILE* out, std::string_view page_template, std::string_view data) {
  const std::size_t place = page_template.find(place_of_data);
  write_text(out, page_template.substr(0, place));
  write_text(out, data);
  write_text(out, page_template.substr(place + place_of_data.size()));
}

std::size_t room_for_data(std::string_view page_template) { return largest_page - 1 - page_template.size(); }
