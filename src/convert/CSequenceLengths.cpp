#include "CSequenceLengths.h"

#include "CLineReader.h"
#include "CTextScanner.h"
#include "sequence-names.h"
#include "shown-text.h"

bool CSequenceLengths::read(const std::string& file_name) {
  CLineReader lines;
  const std::string head = "Sorry! These lengths cannot be used:\n   \"" + shown(file_name) + "\"\n";
  if (!lines.open(file_name)) {
    unreadable = true;
    problem = head + "It cannot be opened: " + lines.error() + ".\n";
    return false;
  }
  CLineReader::outcome outcome = lines.next();
  for (; outcome == CLineReader::outcome::line; outcome = lines.next()) {
    if (add(lines.text())) continue;
    if (lines.foreign_kind() != nullptr) {
      problem = head + lines.foreign_kind() + "\n";
      return false;
    }
    problem = head + "At line " + std::to_string(lines.number()) +
              ", a new name, a tab and a length were expected, as samtools faidx writes them to a .fai file.\n";
    return false;
  }
  if (outcome == CLineReader::outcome::end_of_file) return true;
  unreadable = true;
  problem = head + "At line " + std::to_string(lines.number()) + ": " + lines.error() + ".\n";
  return false;
}

bool CSequenceLengths::add(std::string_view line) {
  const std::size_t tab = line.find('\t');
  if (tab == std::string_view::npos) return false;
  CTextScanner scanner(line.substr(tab + 1));
  int length = 0;
  if (!scanner.padded_number(length) || length < 0) return false;
  if (!scanner.at_end() && !scanner.literal("\t") && scanner.remainder() != "\r") return false;
  sum += length;
  return lengths.emplace(line.substr(0, tab), length).second;
}

std::optional<int> CSequenceLengths::of(const std::string& name) const {
  const auto found = lengths.find(std::string(plain_name(name)));
  if (found == lengths.end()) return std::nullopt;
  return found->second;
}
