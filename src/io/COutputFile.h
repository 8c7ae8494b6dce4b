#pragma once

#include <array>
#include <cstdio>
#include <memory>
#include <string>

// A file that the program writes: the results or the masked sequences.
//
// Opening is in two steps, so that a user's file is never truncated before all names are known to be harmless: claim()
// creates or opens the file as it is, start() empties it. Write errors are remembered by the stream and asked for with
// is_intact(). Not copyable; the destructor closes without asking.
class COutputFile {
 public:
  // Larger than a stream's own. Results are flushed after each record, so it delays nothing.
  using stream_buffer = std::array<char, std::size_t{1} << 16>;

  // The role is the last line of the messages about this file, for instance "as output file.".
  explicit COutputFile(const char* its_role) : role(its_role) {}
  COutputFile(const COutputFile&) = delete;
  COutputFile& operator=(const COutputFile&) = delete;
  ~COutputFile();

  // Opens the named file for writing and leaves its contents. Returns false when that is impossible.
  bool claim(const std::string& file_name);
  // Takes over a file that is open for writing; -1 is none.
  bool claim(int open_file);
  // Uses standard output, which needs no start().
  void claim_standard_output();
  // Empties the file claimed and makes the stream. Returns false when that is impossible.
  bool start();
  // Gives the claimed file up, and removes it if claim() made it.
  void abandon();

  // True when the claimed file is the regular file of that name (same device and inode).
  bool is_same_file_as(const std::string& other_name) const;

  // True while everything written has reached the file, as far as the system tells before the file is closed.
  bool is_intact() const;
  // Closes the file. Returns false when something could not be written. Standard output itself stays open.
  bool close();

  std::FILE* stream() const { return out; }

  // The messages for a file that cannot be opened or written, on standard error. The reason, if there is one, is a line
  // after the rest. A closed pipe on standard output ends the process here as it ends other filters.
  void report_open_failure(const std::string& file_name, const std::string& reason = "") const;
  void report_write_failure() const;
  // The latter alone.
  void end_on_closed_pipe() const;

 private:
  const char* role;
  std::string name;
  int descriptor = -1;
  bool was_created = false;
  std::FILE* out = nullptr;
  std::unique_ptr<stream_buffer> buffer;  // of a named file's stream, until that is closed
};

// True when both names are one regular file, or when the open file and the name are.
bool is_same_regular_file(const std::string& name, const std::string& other_name);
bool is_same_regular_file(int descriptor, const std::string& name);
