#include "backends/linux/Script.h"

#include "backends/linux/EnvCommand.h"
#include "backends/linux/FileStorage.h"
#include "backends/linux/GlibPointers.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <sstream>

namespace orbel::linux {

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
  // The kernel hands everything behind the program over as one argument.
  std::istringstream text(line.substr(2));
  std::string program;
  std::string argument;
  std::getline(text >> program >> std::ws, argument);
  if (FileStorage::nameOf(program) == "env") {
    const auto command = EnvCommand::of({program, argument.substr(0, argument.find_last_not_of(" \t") + 1)});
    if (command.words.empty()) return {};
    program = takeText(g_find_program_in_path(command.words.front().c_str()));
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

} // namespace orbel::linux
