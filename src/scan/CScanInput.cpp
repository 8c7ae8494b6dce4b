#include "CScanInput.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "companion.h"
#include "shown-text.h"

namespace {

// 0 for what has none, as a pipe.
std::int64_t size_of(const std::string& name) {
  std::error_code error;
  const auto size = std::filesystem::file_size(name, error);
  return error ? 0 : static_cast<std::int64_t>(size);
}

}  // namespace

CScanInput::CScanInput(std::vector<std::string> its_names, int its_threads, bool does_keep_letters)
    : names(std::move(its_names)), threads(its_threads), keeps_letters(does_keep_letters) {}

bool CScanInput::open() {
  bool have_sizes = true;
  for (const std::string& one : names) {
    std::error_code ignored;
    if (!std::filesystem::exists(one, ignored)) {
      fail(companion_status::not_read, "Sorry! There is no input file\n   \"" + shown(one) + "\"\n");
      return false;
    }
    if (std::filesystem::is_directory(one, ignored)) {
      fail(companion_status::not_read, "Sorry! This is a directory and no input file:\n   \"" + shown(one) + "\"\n");
      return false;
    }
    const std::int64_t size = size_of(one);
    have_sizes = have_sizes && size > 0;
    total += size;
  }
  if (!have_sizes) total = 0;
  return open_next();
}

bool CScanInput::open_next() {
  ++opened;
  position = 0;
  feed.reset();
  file = std::make_unique<CFile>();
  std::string to_open = name();
  bool is_open = true;
  if (threads > 1 && CBlockFeed::is_blocked(to_open)) {
    feed = std::make_unique<CBlockFeed>();
    is_open = feed->open(to_open, std::min(threads, 8));
    to_open = feed->pipe_name();
  }
  if (is_open) {
    file->open(to_open.c_str());
    is_open = !file->has_failed();
  }
  if (is_open) {
    if (feed) feed->was_opened();
    return true;
  }
  fail(companion_status::not_read,
       "Sorry! The input file\n   \"" + shown(name()) + "\"\ncannot be opened: " + std::strerror(errno) + ".\n");
  return false;
}

std::int64_t CScanInput::position_now() {
  const auto told = feed ? feed->position() : static_cast<std::int64_t>(file->tellg());
  return told < 0 ? size_of(name()) : told;
}

std::unique_ptr<scan_record> CScanInput::next() {
  if (!problem.empty()) return nullptr;
  while (file->at_end_of_file()) {
    if (const char* const fault = feed ? feed->close() : nullptr; fault != nullptr) {
      return fail(companion_status::not_read,
                  "Sorry! The input file\n   \"" + shown(name()) + "\"\ncannot be read to its end: " + fault + ".\n");
    }
    if (opened == names.size() || !open_next()) return nullptr;
  }
  auto record = std::make_unique<scan_record>();
  CSequence_Mol& molecule = record->molecule;
  molecule.short_name.assign(last_short_name.c_str());
  if (keeps_letters) molecule.letters = &record->letters;
  molecule.readFastaSequence(*file);
  if (file->has_failed() && !file->at_end_of_file()) return fail_to_read(molecule);
  last_short_name = molecule.short_name.c_str();
  record->number = ++number;
  const std::int64_t now = position_now();
  record->bytes = now - std::exchange(position, now);
  return record;
}

const char* CScanInput::fault_of_file() {
  file->look_for_faults();
  if (!feed) return file->fault;
  while (file->read(file->buffer, CFile::buffer_size) != 0) continue;
  return feed->close();
}

std::unique_ptr<scan_record> CScanInput::fail_to_read(const CSequence_Mol& record) {
  const std::string where = "Sorry! The input file\n   \"" + shown(name()) + "\"\n";
  const std::string line = "at line " + std::to_string(file->line);
  if (record.is_too_long()) {
    return fail(companion_status::not_fasta, where + "holds a sequence of more than " +
                                                 std::to_string(CSequence_Mol::max_length) + " symbols, " + line +
                                                 ". Please split it.\n");
  }
  if (record.has_too_long_header()) {
    return fail(companion_status::not_fasta,
                where + "has a header that is too long, " + line + ". Please shorten it.\n");
  }
  if (const char* const fault = fault_of_file(); fault != nullptr) {
    return fail(companion_status::not_read, where + "cannot be read to its end, " + line + ": " + fault + ".\n");
  }
  const char* const kind = file->foreign_kind();
  return fail(companion_status::not_fasta,
              where + "is no FASTA file, " + line + ".\n" + (kind == nullptr ? "" : kind + std::string("\n")));
}

std::unique_ptr<scan_record> CScanInput::fail(int status, const std::string& why) {
  problem = why;
  its_status = status;
  return nullptr;
}
