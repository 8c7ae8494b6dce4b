#include "repeat-columns.h"

namespace {

std::vector<std::string> legend(const repeat_layout& layout, const std::string& prefix) {
  std::vector<std::string> lines{prefix, prefix + "Columns in lines of output providing repeat information:"};
  int number = 0;
  for (const repeat_column& column : line_columns) {
    if (!layout.has(column.presence)) continue;
    ++number;
    lines.push_back(prefix + "Column " + (number < 10 ? " " : "") + std::to_string(number) + ": " + column.title);
  }
  lines.push_back(prefix);
  return lines;
}

std::string table_header(const repeat_layout& layout) {
  std::string line = name_title;
  for (const repeat_column& column : table_columns) {
    if (layout.has(column.presence)) (line += table_separator) += column.title;
  }
  return line;
}

}  // namespace

std::vector<std::string> column_lines(const repeat_layout& layout, const std::string& prefix) {
  if (has_blocks(layout.format)) return legend(layout, prefix);
  if (layout.format == one_per_line_format) return {table_header(layout)};
  return {};
}
