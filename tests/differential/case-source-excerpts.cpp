#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "case-sources.h"
#include "reference-cost.h"

namespace differential {

namespace {

struct data_file {
  std::filesystem::path path;
  std::uintmax_t size;
};

// In the order of the names, so that a seed means the same excerpts everywhere.
std::vector<data_file> fasta_files_in(const std::filesystem::path& directory) {
  std::vector<data_file> files;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    if (entry.is_regular_file() && entry.path().extension() == ".fa" && entry.file_size() > 0) {
      files.push_back({entry.path(), entry.file_size()});
    }
  }
  std::sort(files.begin(), files.end(), [](const data_file& a, const data_file& b) { return a.path < b.path; });
  if (files.empty()) throw std::runtime_error("no *.fa file in " + directory.string());
  return files;
}

std::string read_piece(const data_file& file, std::uintmax_t begin, std::size_t length) {
  std::ifstream stream(file.path, std::ios::binary);
  stream.seekg(static_cast<std::streamoff>(begin));
  std::string text(length, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(length));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  return text;
}

// Whole lines of the file after a header of its own; headers in the piece begin further records.
std::string excerpt(const data_file& file, std::uintmax_t begin, std::size_t length) {
  const std::string piece = read_piece(file, begin, length);
  const std::string header = '>' + file.path.stem().string() + ' ' + std::to_string(begin) + '\n';
  return header + piece.substr(std::min(piece.find('\n'), piece.size() - 1) + 1);
}

test_case excerpt_case(std::uint64_t seed, std::uint64_t index, const std::vector<data_file>& files) {
  CRandom random(seed_of_case(seed, index));
  search_settings settings;
  if (random.percent(70)) settings = random_settings(random);
  const data_file& file = files[random.below(files.size())];
  const std::size_t length =
      50 + std::min<std::size_t>(50000, affordable_symbols(settings, texture::sparse, ordinary_cost));
  test_case made;
  made.label = label_of("excerpts", seed, index);
  made.options = settings.options;
  made.fasta = excerpt(file, random.below(static_cast<std::size_t>(file.size)), length);
  return made;
}

}  // namespace

case_source excerpt_cases(std::uint64_t seed, const std::filesystem::path& data) {
  return [seed, files = fasta_files_in(data)](std::uint64_t index) { return excerpt_case(seed, index, files); };
}

}  // namespace differential
