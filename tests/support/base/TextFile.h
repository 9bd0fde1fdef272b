// Whole files read and written as bytes, for the small files that tests exchange with programs.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace orbel::test {

// Empty when the file does not exist.
std::string readFile(const std::filesystem::path& path);
std::vector<std::string> readLines(const std::filesystem::path& path);

// Missing folders are made. Throws std::runtime_error when the bytes cannot be written.
void writeFile(const std::filesystem::path& path, std::string_view bytes);

// Through a temporary file and a rename, so a program that watches the file never sees half of it.
void replaceFile(const std::filesystem::path& path, std::string_view bytes);

} // namespace orbel::test
