#include "tests/desktop/harness/DesktopEntries.h"

#include "tests/support/base/TextFile.h"

#include <utility>

namespace orbel::test {

namespace {

// Quoting of the desktop-entry standard, then its escaping of backslashes in values.
std::string quoted(const std::string& argument) {
  if (argument.size() == 2 && argument.front() == '%') return argument; // a field code
  std::string result = "\"";
  for (const char character : argument) {
    if (character == '"' || character == '`' || character == '$') result += "\\\\";
    if (character == '\\') result += "\\\\\\";
    if (character == '%') result += '%';
    result += character;
  }
  return result + '"';
}

std::string joined(const std::vector<std::string>& parts) {
  std::string result;
  for (const std::string& part : parts)
    result += part + ';';
  return result;
}

} // namespace

DesktopEntries::DesktopEntries(std::filesystem::path dataFolder, std::filesystem::path configurationFolder)
    : m_dataFolder(std::move(dataFolder)), m_configurationFolder(std::move(configurationFolder)) {}

std::filesystem::path DesktopEntries::install(const DesktopEntry& entry) {
  std::string text = "[Desktop Entry]\nType=Application\nName=" + entry.name + "\nExec=";
  for (const std::string& argument : entry.command)
    text += quoted(argument) + ' ';
  text += '\n';
  if (!entry.icon.empty()) text += "Icon=" + entry.icon + '\n';
  if (!entry.windowClass.empty()) text += "StartupWMClass=" + entry.windowClass + '\n';
  if (!entry.mimeTypes.empty()) text += "MimeType=" + joined(entry.mimeTypes) + '\n';
  for (const auto& [key, value] : entry.further)
    text.append(key).append("=").append(value).append("\n");
  m_mimeTypes[entry.id] = entry.mimeTypes;
  writeMimeCache();
  return installText(entry.id, text);
}

std::filesystem::path DesktopEntries::installText(const std::string& id, const std::string& text) {
  replaceFile(pathOf(id), text);
  return pathOf(id);
}

void DesktopEntries::remove(const std::string& id) {
  std::filesystem::remove(pathOf(id));
  m_mimeTypes.erase(id);
  writeMimeCache();
}

std::filesystem::path DesktopEntries::pathOf(const std::string& id) const {
  return m_dataFolder / "applications" / (id + ".desktop");
}

void DesktopEntries::setDefault(const std::string& mimeType, const std::string& id) {
  m_defaults[mimeType] = id;
  std::string text = "[Default Applications]\n";
  for (const auto& [type, entry] : m_defaults) {
    text.append(type).append("=").append(entry).append(".desktop\n");
  }
  replaceFile(m_configurationFolder / "mimeapps.list", text);
}

// GIO believes this cache and not the MimeType keys themselves.
void DesktopEntries::writeMimeCache() const {
  std::map<std::string, std::vector<std::string>> entries;
  for (const auto& [id, types] : m_mimeTypes) {
    for (const std::string& type : types)
      entries[type].push_back(id + ".desktop");
  }
  std::string text = "[MIME Cache]\n";
  for (const auto& [type, ids] : entries)
    text.append(type).append("=").append(joined(ids)).append("\n");
  replaceFile(m_dataFolder / "applications/mimeinfo.cache", text);
}

} // namespace orbel::test
