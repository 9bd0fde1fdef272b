// A desktop of the test program's own: home, data, configuration and program folders, set up in the
// environment before anything of GLib reads it, removed when the program ends. Also plain helpers for files
// in it.
#pragma once

#include "foundation/PropertyList.h"

#include <string>
#include <vector>

namespace orbel::linux {

class DesktopSandbox {
public:
  static DesktopSandbox& shared();

  // A new empty folder, open to every user.
  std::string makeFolder();
  // Installed for the user: the path of the entry. Lines follow "[Desktop Entry]" and "Type=Application".
  std::string installEntry(const std::string& identifier, const std::string& lines);
  // The same for all users, which an entry of the user's stands before.
  std::string installSystemEntry(const std::string& identifier, const std::string& lines);
  void removeEntry(const std::string& identifier);
  void removeAllEntries();
  // "type=entry.desktop" lines of the user's default applications.
  void setDefaults(const std::string& lines);
  // A program that is found by its name: a shell script.
  std::string installProgram(const std::string& name, const std::string& script);

  const std::string& root() const { return m_root; }

  static void write(const std::string& path, const std::string& text);
  static std::string read(const std::string& path); // "" when there is none
  static bool exists(const std::string& path);
  static std::vector<std::string> list(const std::string& folder); // names, sorted
  static PropertyList::Data bytes(const std::string& text);

private:
  DesktopSandbox();
  ~DesktopSandbox();
  std::string m_root;
  int m_folders = 0;
};

} // namespace orbel::linux
