#include "tests/support/base/TextFile.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace orbel::test {

std::string readFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

std::vector<std::string> readLines(const std::filesystem::path& path) {
  std::istringstream text(readFile(path));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);)
    lines.push_back(line);
  return lines;
}

void writeFile(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << bytes;
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path.string());
}

void replaceFile(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::path temporary = path;
  temporary += ".new";
  writeFile(temporary, bytes);
  std::filesystem::rename(temporary, path);
}

} // namespace orbel::test
