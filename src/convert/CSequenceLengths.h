#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

// The lengths of sequences from a table beside the results: lines of a name, a tab, a length in symbols, and anything
// after a further tab, as in the index of a FASTA file or in chrom.sizes. Memory grows with the number of sequences.
class CSequenceLengths {
 public:
  // Reads the table. Returns false when that is impossible; error() then says why, in lines for the user.
  bool read(const std::string& file_name);

  // The length of the sequence whose name begins with this one up to white space, as other programs cut names.
  std::optional<int> of(const std::string& name) const;
  // The sum of all lengths; nothing without any.
  std::optional<std::int64_t> total() const { return lengths.empty() ? std::nullopt : std::optional(sum); }

  // True when the error is the file itself, false when it is what stands in it.
  bool is_unreadable() const { return unreadable; }
  const std::string& error() const { return problem; }

 private:
  std::unordered_map<std::string, int> lengths;
  std::int64_t sum = 0;
  bool unreadable = false;
  std::string problem;

  bool add(std::string_view line);
};
