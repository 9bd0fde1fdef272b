#include "backends/linux/ApplicationFinder.h"

#include "backends/linux/FileStorage.h"

#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string_view>
#include <variant>

namespace orbel::linux {

namespace {

bool isOrdinaryFile(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// "AI" and the format's version in the padding of the ELF header.
bool hasAppImageMark(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (file < 0) return false;
  std::array<char, 11> start{};
  const ssize_t length = ::read(file, start.data(), start.size());
  ::close(file);
  const std::string_view header(start.data(), start.size());
  return length == static_cast<ssize_t>(start.size()) &&
         header.starts_with("\x7f"
                            "ELF") &&
         header.substr(8, 2) == "AI" && (header[10] == 1 || header[10] == 2);
}

} // namespace

bool ApplicationFinder::isProgram(const std::string& path) {
  return isOrdinaryFile(path) && ::access(path.c_str(), X_OK) == 0;
}

bool ApplicationFinder::isAppImage(const std::string& path) {
  constexpr std::string_view kSuffix = ".appimage";
  if (path.size() > kSuffix.size() &&
      ::strcasecmp(path.c_str() + path.size() - kSuffix.size(), kSuffix.data()) == 0) {
    return true;
  }
  return isOrdinaryFile(path) && hasAppImageMark(path);
}

std::optional<ApplicationFinder::Application> ApplicationFinder::find(const std::string& nameOrPath) const {
  if (nameOrPath.empty()) return std::nullopt;
  return nameOrPath.front() == '/' ? findByPath(nameOrPath) : findByName(nameOrPath);
}

std::optional<ApplicationFinder::Application> ApplicationFinder::findByName(const std::string& name) const {
  // A program of exactly that name is meant before the one that plays the role of the name.
  Application application;
  for (const auto& record : m_running.records()) {
    if (record->localizedName() == name) application.running = record;
    if (application.running) break;
  }
  if (application.running) {
    const auto bundle = application.running->bundlePath().value_or("");
    (DesktopEntry::isEntryPath(bundle) ? application.entryPath : application.executablePath) = bundle;
    return application;
  }
  if (const auto entry = m_roles.entry(name))
    return Application{runningWithBundle(entry->path), entry->path, {}, false};
  if (RoleApplications::isRole(name)) return std::nullopt;
  if (const DesktopEntry* entry = m_entries.withName(name)) {
    return Application{runningWithBundle(entry->path), entry->path, {}, false};
  }
  return std::nullopt;
}

std::optional<ApplicationFinder::Application>
ApplicationFinder::findByPath(const std::string& givenPath) const {
  Application application{runningWithBundle(givenPath), {}, {}, false};
  if (DesktopEntry::isEntryPath(givenPath)) {
    application.entryPath = givenPath;
    return application;
  }
  // The kernel and the index know programs by their paths without links.
  const std::string path = FileStorage::withoutLinks(givenPath);
  int processes = 0;
  for (const auto& record : m_running.records()) {
    const std::string executable = record->executablePath().value_or("");
    const bool runsPath = executable == path;
    if (!application.running && (runsPath || executable.starts_with(path + "/")))
      application.running = record;
    if (runsPath) ++processes;
  }
  application.runsMoreThanOnce = processes > 1;
  if (const DesktopEntry* entry = m_entries.withExecutable(path)) {
    application.entryPath = entry->path;
  } else if (isProgram(path) || isAppImage(path)) {
    application.executablePath = path;
  } else if (!application.running) {
    return std::nullopt;
  }
  return application;
}

RunningApplicationPointer ApplicationFinder::runningWithBundle(const std::string& bundlePath) const {
  for (const auto& record : m_running.records()) {
    if (RunningApplicationList::runsBundle(*record, bundlePath)) return record;
  }
  return nullptr;
}

} // namespace orbel::linux
