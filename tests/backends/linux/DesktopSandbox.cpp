#include "tests/backends/linux/DesktopSandbox.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace orbel::linux {

namespace {
// Made while the program loads, before GLib can remember the real folders.
[[maybe_unused]] const DesktopSandbox& loaded = DesktopSandbox::shared();
} // namespace

DesktopSandbox& DesktopSandbox::shared() {
  static DesktopSandbox sandbox;
  return sandbox;
}

DesktopSandbox::DesktopSandbox() {
  std::string name = std::filesystem::temp_directory_path().string() + "/orbel-linux-XXXXXX";
  m_root = ::mkdtemp(name.data());
  ::chmod(m_root.c_str(), 0755);
  for (const char* folder : {"home", "config", "cache", "runtime", "data/applications", "system/applications",
                             "data/mime/packages", "bin"}) {
    std::filesystem::create_directories(m_root + "/" + folder);
  }
  ::setenv("HOME", (m_root + "/home").c_str(), 1);
  ::setenv("XDG_CONFIG_HOME", (m_root + "/config").c_str(), 1);
  ::setenv("XDG_CONFIG_DIRS", (m_root + "/config-system").c_str(), 1);
  ::setenv("XDG_CACHE_HOME", (m_root + "/cache").c_str(), 1);
  ::setenv("XDG_RUNTIME_DIR", (m_root + "/runtime").c_str(), 1);
  ::setenv("XDG_DATA_HOME", (m_root + "/data").c_str(), 1);
  ::setenv("XDG_DATA_DIRS", (m_root + "/system").c_str(), 1);
  ::setenv("PATH", (m_root + "/bin:" + (std::getenv("PATH") ? std::getenv("PATH") : "/bin")).c_str(), 1);
  ::setenv("LANGUAGE", "de", 1);
  ::setenv("LC_ALL", "C.UTF-8", 1);
  ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
  ::unsetenv("DISPLAY");
  ::unsetenv("XDG_CURRENT_DESKTOP");
  write(m_root + "/data/mime/globs2", "50:application/x-orbel-test:*.orbeltest\n");
}

DesktopSandbox::~DesktopSandbox() {
  std::error_code ignored;
  std::filesystem::remove_all(m_root, ignored);
}

std::string DesktopSandbox::makeFolder() {
  const std::string folder = m_root + "/folder-" + std::to_string(++m_folders);
  std::filesystem::create_directories(folder);
  ::chmod(folder.c_str(), 0777);
  return folder;
}

std::string DesktopSandbox::installEntry(const std::string& identifier, const std::string& lines) {
  const std::string path = m_root + "/data/applications/" + identifier;
  write(path, "[Desktop Entry]\nType=Application\n" + lines);
  return path;
}

std::string DesktopSandbox::installSystemEntry(const std::string& identifier, const std::string& lines) {
  const std::string path = m_root + "/system/applications/" + identifier;
  write(path, "[Desktop Entry]\nType=Application\n" + lines);
  return path;
}

void DesktopSandbox::removeEntry(const std::string& identifier) {
  ::unlink((m_root + "/data/applications/" + identifier).c_str());
}

void DesktopSandbox::removeAllEntries() {
  for (const char* folder : {"/data/applications", "/system/applications"}) {
    for (const auto& name : list(m_root + folder))
      std::filesystem::remove_all(m_root + folder + "/" + name);
  }
  ::unlink((m_root + "/config/mimeapps.list").c_str());
}

void DesktopSandbox::setDefaults(const std::string& lines) {
  write(m_root + "/config/mimeapps.list",
        "[Default Applications]\n" + lines + "\n[Added Associations]\n" + lines);
}

std::string DesktopSandbox::installProgram(const std::string& name, const std::string& script) {
  const std::string path = m_root + "/bin/" + name;
  write(path, "#!/bin/sh\n" + script);
  ::chmod(path.c_str(), 0755);
  return path;
}

void DesktopSandbox::write(const std::string& path, const std::string& text) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << text;
}

std::string DesktopSandbox::read(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

bool DesktopSandbox::exists(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

std::vector<std::string> DesktopSandbox::list(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& file : std::filesystem::directory_iterator(folder))
    names.push_back(file.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

PropertyList::Data DesktopSandbox::bytes(const std::string& text) {
  const auto* start = reinterpret_cast<const std::byte*>(text.data());
  return {start, start + text.size()};
}

} // namespace orbel::linux
