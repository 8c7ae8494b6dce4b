// Whole files, byte for byte, and directories with names that nobody else uses.
#pragma once

#include <filesystem>
#include <string>

namespace differential {

// Both throw std::runtime_error if the file cannot be read or written.
std::string read_file(const std::filesystem::path& path);
void write_file(const std::filesystem::path& path, const std::string& bytes);

// Makes a new directory inside an existing one.
std::filesystem::path make_directory(const std::filesystem::path& parent);

}  // namespace differential
