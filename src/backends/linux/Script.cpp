#include "backends/linux/Script.h"

#include "backends/linux/FileStorage.h"
#include "backends/linux/GlibPointers.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <sstream>

namespace orbel {

namespace {

std::string firstLine(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (file < 0) return {};
  std::array<char, 256> start; // the kernel looks no further either
  const ssize_t length = ::read(file, start.data(), start.size());
  ::close(file);
  if (length <= 0) return {};
  return {start.data(), std::find(start.data(), start.data() + length, '\n')};
}

// What the "#!" line names, "env" looked through.
std::string interpreterOf(const std::string& path) {
  const std::string line = firstLine(path);
  if (!line.starts_with("#!")) return {};
  std::istringstream words(line.substr(2));
  std::string program;
  words >> program;
  if (FileStorage::nameOf(program) == "env") {
    while (words >> program && (program.starts_with('-') || program.find('=') != std::string::npos)) {
    }
    program = takeText(g_find_program_in_path(program.c_str()));
  }
  return FileStorage::withoutLinks(program);
}

} // namespace

std::optional<std::string> Script::runBy(const std::string& executable,
                                         const std::vector<std::string>& arguments) {
  if (arguments.size() < 2) return std::nullopt;
  const auto first = std::find_if(arguments.begin() + 1, arguments.end(),
                                  [](const std::string& argument) { return !argument.starts_with('-'); });
  if (first == arguments.end() || !first->starts_with('/')) return std::nullopt;
  if (::access(first->c_str(), X_OK) != 0 || interpreterOf(*first) != executable) return std::nullopt;
  return *first;
}

} // namespace orbel
