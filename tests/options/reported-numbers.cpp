#include "reported-numbers.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace {

using numbers_of_line = bool (*)(const std::string& line, reported_numbers& numbers);

std::vector<std::string> split(const std::string& line, char separator) {
  std::vector<std::string> parts;
  std::istringstream in(line);
  for (std::string part; std::getline(in, part, separator);) parts.push_back(part);
  return parts;
}

// A number that is not there, or too large, counts as wrong.
long long as_number(const std::string& text) {
  char* end = nullptr;
  const long long number = std::strtoll(text.c_str(), &end, 10);
  return end == text.c_str() || *end != '\0' ? -1 : number;
}

double as_ratio(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

std::vector<std::string> words_of(const std::string& text) {
  std::vector<std::string> words;
  std::istringstream in(text);
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

// "mononucleotide  2 : 9 | 8 bp | 8 BP | 7 pt | 100.000 % | 0 mis | 0 ins | 0 del | 0 N | unit A", or less of it.
bool of_quarvo_line(const std::string& line, reported_numbers& numbers) {
  const std::vector<std::string> columns = split(line, '|');
  if (columns.size() < 5 || columns.back().find(" unit ") == std::string::npos) return false;
  const std::vector<std::string> place = words_of(columns.front());
  if (place.size() != 4 || place[2] != ":") return false;
  numbers.start = as_number(place[1]);
  numbers.end = as_number(place[3]);
  for (std::size_t i = 1; i + 1 < columns.size(); ++i) {
    const std::vector<std::string> words = words_of(columns[i]);
    if (words.size() != 2) return false;
    if (words[1] == "%") {
      numbers.ratios.push_back(as_ratio(words[0]));
    } else if (words[1] != "pt") {
      numbers.counts.push_back(as_number(words[0]));
    }
  }
  return true;
}

bool of_gff_line(const std::string& line, reported_numbers& numbers) {
  const std::vector<std::string> columns = split(line, '\t');
  if (line.starts_with('#') || columns.size() < 9) return false;
  numbers.start = as_number(columns[3]);
  numbers.end = as_number(columns[4]);
  numbers.ratios = {as_ratio(columns[5])};
  numbers.counts = {-1, -1, -1};
  std::sscanf(columns[8].c_str(), "Name=\"repeat_region %lld-%lld unit_size %lld ", &numbers.counts[0],
              &numbers.counts[1], &numbers.counts[2]);
  return true;
}

bool of_table_line(const std::string& line, reported_numbers& numbers) {
  const std::vector<std::string> columns = split(line, '\t');
  if (line.starts_with('#') || columns.size() < 13 || columns[1] == "unit-length") return false;
  numbers.start = as_number(columns[3]);
  numbers.end = as_number(columns[4]);
  for (const std::size_t column : {1U, 5U, 8U, 9U, 10U}) numbers.counts.push_back(as_number(columns[column]));
  if (columns[11] != ".") numbers.counts.push_back(as_number(columns[11]));
  numbers.ratios = {as_ratio(columns[2]), as_ratio(columns[6])};
  return true;
}

// ">name offset span unit-length start end copies score perfection mismatches insertions deletions"
bool of_fasta_line(const std::string& line, reported_numbers& numbers) {
  const std::vector<std::string> words = split(line, ' ');
  if (!line.starts_with('>') || words.size() != 12) return false;
  numbers.start = as_number(words[4]);
  numbers.end = as_number(words[5]);
  for (const std::size_t word : {1U, 2U, 3U, 9U, 10U, 11U}) numbers.counts.push_back(as_number(words[word]));
  numbers.ratios = {as_ratio(words[6]), as_ratio(words[8])};
  return true;
}

// "Missense: (3,M),(7,I)," belongs to the repeat on the line before.
void add_positions_of_edits(const std::string& line, reported_numbers& numbers) {
  for (std::size_t at = line.find('('); at != std::string::npos; at = line.find('(', at + 1)) {
    numbers.counts.push_back(as_number(line.substr(at + 1, line.find(',', at) - at - 1)));
  }
}

}  // namespace

std::vector<reported_numbers> repeats_in(const std::string& results, int output_format) {
  constexpr numbers_of_line of_format[] = {of_quarvo_line, of_quarvo_line, of_gff_line, of_table_line, of_fasta_line};
  std::vector<reported_numbers> repeats;
  std::istringstream in(results);
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with("Missense: ") && !repeats.empty()) add_positions_of_edits(line, repeats.back());
    reported_numbers numbers;
    numbers.line = line;
    if (!of_format[output_format](line, numbers)) continue;
    repeats.push_back(numbers);
  }
  return repeats;
}
