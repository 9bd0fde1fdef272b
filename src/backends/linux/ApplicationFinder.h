// Finds the application that a name or path means: a built-in name by its role, a running program's or an
// installed entry's name, a desktop entry, AppImage, executable or bundle by its path.
#pragma once

#include "backends/linux/DesktopEntryIndex.h"
#include "backends/linux/RoleApplications.h"
#include "backends/linux/RunningApplicationList.h"

#include <optional>
#include <string>

namespace orbel::linux {

class ApplicationFinder {
public:
  struct Application {
    RunningApplicationPointer running; // empty when it does not run
    std::string entryPath;             // else "": of its desktop entry
    std::string executablePath;        // else "": of a program or AppImage without an entry
    // The path is that of an executable which more programs than that one run.
    bool runsMoreThanOnce = false;
  };

  ApplicationFinder(const DesktopEntryIndex& entries, const RoleApplications& roles,
                    const RunningApplicationList& running)
      : m_entries(entries), m_roles(roles), m_running(running) {}

  // Nothing when no application is meant. A path is absolute, a name is anything else.
  std::optional<Application> find(const std::string& nameOrPath) const;

  // A file that the user may execute.
  static bool isProgram(const std::string& path);
  // By its name or its mark; executable or not.
  static bool isAppImage(const std::string& path);

private:
  std::optional<Application> findByName(const std::string& name) const;
  std::optional<Application> findByPath(const std::string& path) const;
  RunningApplicationPointer runningWithBundle(const std::string& bundlePath) const;

  const DesktopEntryIndex& m_entries;
  const RoleApplications& m_roles;
  const RunningApplicationList& m_running;
};

} // namespace orbel::linux
