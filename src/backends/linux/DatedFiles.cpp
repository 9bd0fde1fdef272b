#include "backends/linux/DatedFiles.h"

#include "backends/linux/FileStorage.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>

namespace orbel::linux {

namespace {

constexpr std::size_t kStampLength = 15;

std::string stamp(std::time_t time) {
  std::tm parts{};
  localtime_r(&time, &parts);
  char text[kStampLength + 1];
  return std::string(text, std::strftime(text, sizeof text, "%Y%m%dT%H%M%S", &parts));
}

bool isStamp(const std::string& text) {
  if (text.size() != kStampLength) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool fits = i == 8 ? text[i] == 'T' : std::isdigit(static_cast<unsigned char>(text[i])) != 0;
    if (!fits) return false;
  }
  return true;
}

bool isThere(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

} // namespace

std::string DatedFiles::freePath(const std::string& prefix, const std::string& suffix) {
  for (std::time_t time = std::time(nullptr);; ++time) {
    std::string path = prefix + stamp(time) + suffix;
    if (!isThere(path)) return path;
  }
}

std::vector<std::string> DatedFiles::existing(const std::string& prefix, const std::string& suffix) {
  const std::string folder = FileStorage::folderOf(prefix);
  const std::string namePrefix = FileStorage::nameOf(prefix);
  struct File {
    std::filesystem::file_time_type time;
    std::string path;
    auto operator<=>(const File&) const = default;
  };
  std::vector<File> found;
  std::error_code error;
  for (std::filesystem::directory_iterator file(folder, error), end; !error && file != end;
       file.increment(error)) {
    const std::string name = file->path().filename().string();
    if (name.size() != namePrefix.size() + kStampLength + suffix.size()) continue;
    if (!name.starts_with(namePrefix) || !name.ends_with(suffix)) continue;
    if (!isStamp(name.substr(namePrefix.size(), kStampLength))) continue;
    std::error_code unknown; // a file removed meanwhile may stand in any place
    found.push_back({file->last_write_time(unknown), folder + "/" + name});
  }
  // Not by their names: a clock that is put back, as at the end of summer, would make the newest the oldest.
  std::sort(found.begin(), found.end());
  std::vector<std::string> paths;
  for (File& file : found)
    paths.push_back(std::move(file.path));
  return paths;
}

Result<DatedFiles::Aside> DatedFiles::keepAside(const std::string& path, const std::string& suffix) {
  while (true) {
    const std::string aside = freePath(path + suffix, "");
    if (::link(path.c_str(), aside.c_str()) == 0) return Aside{aside, true};
    if (errno == EEXIST) continue;
    if (::rename(path.c_str(), aside.c_str()) == 0) return Aside{aside, false};
    return Failure{std::strerror(errno)};
  }
}

} // namespace orbel::linux
