// The applications that exist for programs in a test session: desktop entries, default applications and the
// MIME cache, in the session's own data folder. Nothing that is installed on the machine appears beside them.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace orbel::test {

struct DesktopEntry {
  std::string id; // without ".desktop"
  std::string name;
  // Quoted as the Exec key wants it; field codes such as "%F" stand alone
  std::vector<std::string> command = {};
  std::string icon = {};
  std::string windowClass = {}; // StartupWMClass
  std::vector<std::string> mimeTypes = {};
  std::map<std::string, std::string> further = {}; // other keys: Categories, NoDisplay, Path, Hidden
};

class DesktopEntries {
public:
  // `dataFolder` is one of $XDG_DATA_DIRS, `configurationFolder` is $XDG_CONFIG_HOME.
  DesktopEntries(std::filesystem::path dataFolder, std::filesystem::path configurationFolder);

  // Writes or replaces the entry; returns its path.
  std::filesystem::path install(const DesktopEntry& entry);
  // The text is written to the file as it is, for entries that are wrong on purpose.
  std::filesystem::path installText(const std::string& id, const std::string& text);
  void remove(const std::string& id);
  std::filesystem::path pathOf(const std::string& id) const;

  // The user's choice for a type or a scheme ("inode/directory", "x-scheme-handler/mailto").
  void setDefault(const std::string& mimeType, const std::string& id);

private:
  void writeMimeCache() const;

  std::filesystem::path m_dataFolder;
  std::filesystem::path m_configurationFolder;
  std::map<std::string, std::vector<std::string>> m_mimeTypes; // by entry id
  std::map<std::string, std::string> m_defaults;               // entry id by MIME type
};

} // namespace orbel::test
