// Starts programs on behalf of the user: in a session of their own, with a startup-notification and
// activation token, and without what only concerns our own process in their environment. Never waits for
// a program.
#pragma once

#include "backends/common/TopLevelWindows.h"
#include "backends/linux/DesktopEntry.h"
#include "foundation/Result.h"

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace orbel::linux {

class Launcher {
public:
  // Private variables: names that main has set for this process alone, besides those that every starter of
  // programs takes away.
  Launcher(common::TopLevelWindows& windows, std::vector<std::string> privateVariables);

  // What shows only after the start is logged here.
  Result<> launchEntry(const std::string& entryPath, const std::vector<std::string>& uris) const;
  // An executable file or AppImage, with paths (or other words) as its arguments, in the home folder.
  Result<> launchExecutable(const std::string& path, const std::vector<std::string>& arguments) const;

  // The entry that was started under that identifier, or "". The last few dozen are known.
  std::string entryStartedAs(const std::string& startupId) const;

private:
  std::string makeStartupId(const std::string& name, const std::string& entryPath) const;

  common::TopLevelWindows& m_windows;
  std::vector<std::string> m_privateVariables;
  mutable std::deque<std::pair<std::string, std::string>> m_started; // startup identifier, entry path
};

} // namespace orbel::linux
