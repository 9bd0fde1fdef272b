// What belongs to a desktop itself, remembered when it has come up: its processes, the files in its folders
// and the properties of its root window. Everything else is a test's, and is ended and removed again.
#pragma once

#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/Windows.h"

#include <filesystem>
#include <set>
#include <sys/types.h>
#include <vector>

namespace orbel::test {

class DesktopMemory {
public:
  // `folder` holds the session's folders, of which `runtimeFolder` marks its processes.
  DesktopMemory(std::filesystem::path folder, std::filesystem::path runtimeFolder,
                DisplayConnection& display);

  // False when something of the desktop's own has ended, or something that is not stays.
  bool restore(Windows& windows, bool hasWindowManager);

private:
  bool endOtherProcesses() const;
  bool waitForTheirWindows(const Windows& windows) const;
  void removeOtherFiles() const;
  void forgetFocusAndProperties() const;
  std::set<std::filesystem::path> files() const;
  std::vector<xcb_atom_t> rootProperties() const;

  std::filesystem::path m_folder;
  std::filesystem::path m_runtimeFolder;
  DisplayConnection& m_display;
  std::set<pid_t> m_processes;
  std::set<std::filesystem::path> m_files;
  std::vector<xcb_atom_t> m_rootProperties;
};

} // namespace orbel::test
