// Which installed program plays the role of a built-in name: "Finder" shows folders, "Launchpad" finds
// applications, "App Store" installs them, "iTunes" plays music, "Safari" browses, "Mail" writes mail. Names
// are compared exactly. The user's default applications decide where the desktop knows such a default, a list
// of candidates elsewhere.
#pragma once

#include "backends/linux/DesktopEntryIndex.h"

#include <map>
#include <optional>
#include <string>

namespace orbel::linux {

class RoleApplications {
public:
  explicit RoleApplications(DesktopEntryIndex& entries);

  static bool isRole(const std::string& name);
  // Nothing when the name is no role or no program plays it.
  std::optional<DesktopEntry> entry(const std::string& name) const;

private:
  DesktopEntryIndex& m_entries;
  mutable std::map<std::string, std::optional<DesktopEntry>> m_known; // until entries or defaults change
  Registration m_registration;
};

} // namespace orbel::linux
