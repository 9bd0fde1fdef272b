#include "backends/linux/ProcessRecord.h"

#include "backends/linux/FileStorage.h"
#include "backends/linux/Script.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <string_view>

namespace orbel::linux {

namespace {

constexpr std::size_t kLargestRecord = 4 * 1024 * 1024; // the kernel's own limit for arguments is about that

std::string fileOf(std::int32_t process, const char* name) {
  return "/proc/" + std::to_string(process) + "/" + name;
}

std::string textOf(std::int32_t process, const char* name) {
  const auto content = FileStorage::read(fileOf(process, name), kLargestRecord);
  return {reinterpret_cast<const char*>(content.bytes.data()), content.bytes.size()};
}

std::vector<std::string> splitAtNulls(const std::string& text) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find('\0', begin), text.size());
    parts.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return parts;
}

std::optional<std::string> valueOf(const std::vector<std::string>& environment, std::string_view name) {
  for (const std::string& variable : environment) {
    if (variable.size() > name.size() && variable.starts_with(name) && variable[name.size()] == '=') {
      return variable.substr(name.size() + 1);
    }
  }
  return std::nullopt;
}

std::optional<std::string> executableOf(std::int32_t process) {
  std::array<char, PATH_MAX> target;
  const ssize_t length = ::readlink(fileOf(process, "exe").c_str(), target.data(), target.size());
  if (length <= 0) return std::nullopt;
  std::string path(target.data(), static_cast<std::size_t>(length));
  // The kernel marks a program whose file was replaced, by an update say; its path is still what it was.
  constexpr std::string_view kDeleted = " (deleted)";
  if (path.ends_with(kDeleted) && ::access(path.c_str(), F_OK) != 0)
    path.resize(path.size() - kDeleted.size());
  return path;
}

} // namespace

std::optional<std::uint64_t> ProcessRecord::startTimeOf(std::int32_t processIdentifier) {
  if (processIdentifier <= 0) return std::nullopt;
  const std::string status = textOf(processIdentifier, "stat");
  // The name in parentheses may hold spaces and parentheses itself; the numbered fields follow the last one.
  const std::size_t name = status.rfind(')');
  if (name == std::string::npos || name + 2 >= status.size()) return std::nullopt;
  const char state = status[name + 2];
  if (state == 'Z' || state == 'X') return std::nullopt;
  std::size_t field = name + 2; // the third field
  for (int i = 3; i < 22; ++i) {
    field = status.find(' ', field);
    if (field == std::string::npos) return std::nullopt;
    ++field;
  }
  return std::strtoull(status.c_str() + field, nullptr, 10);
}

std::optional<ProcessRecord> ProcessRecord::read(std::int32_t processIdentifier) {
  const auto startTime = startTimeOf(processIdentifier);
  if (!startTime) return std::nullopt;
  ProcessRecord record;
  record.processIdentifier = processIdentifier;
  record.startTime = *startTime;
  record.arguments = splitAtNulls(textOf(processIdentifier, "cmdline"));
  record.executablePath = executableOf(processIdentifier);
  if (record.executablePath) {
    if (auto script = Script::runBy(*record.executablePath, record.arguments)) record.executablePath = script;
  }

  const auto environment = splitAtNulls(textOf(processIdentifier, "environ"));
  // Both are inherited by whatever the program starts, so they count only where they are about this
  // very process.
  const auto mount = valueOf(environment, "APPDIR");
  if (mount && !mount->empty() && record.executablePath && record.executablePath->starts_with(*mount + "/")) {
    record.appImagePath = valueOf(environment, "APPIMAGE");
  }
  if (valueOf(environment, "GIO_LAUNCHED_DESKTOP_FILE_PID") == std::to_string(processIdentifier)) {
    record.launchedEntryPath = valueOf(environment, "GIO_LAUNCHED_DESKTOP_FILE");
  }
  return record;
}

} // namespace orbel::linux
