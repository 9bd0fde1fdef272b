#include "backends/linux/RoleApplications.h"

#include "backends/linux/DefaultApplications.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <variant>
#include <vector>

namespace orbel::linux {

namespace {

struct Role {
  std::string_view name;
  std::vector<std::string> contentTypes; // whose default application plays the role; the first that has one
  std::vector<std::string> candidates;   // else the first of these entries that is installed
  std::string category;                  // else the first shown entry of this category; "" for none
};

const std::array<Role, 6>& roles() {
  static const std::array<Role, 6> all{{
      {"Finder", {"inode/directory"}, {}, "FileManager"},
      {"Launchpad", {}, {"xfce4-appfinder", "org.kde.krunner", "krunner", "lxqt-runner", "rofi"}, ""},
      {"App Store",
       {},
       {"org.gnome.Software", "org.kde.discover", "io.elementary.appcenter", "mintinstall", "pamac-manager",
        "snap-store_ubuntu-software", "gpk-application", "synaptic"},
       "PackageManager"},
      {"iTunes", {"audio/mpeg", "audio/x-vorbis+ogg", "audio/flac"}, {}, "Music"},
      {"Safari", {"x-scheme-handler/https", "x-scheme-handler/http", "text/html"}, {}, "WebBrowser"},
      {"Mail", {"x-scheme-handler/mailto"}, {}, "Email"},
  }};
  return all;
}

const Role* roleNamed(const std::string& name) {
  const auto role =
      std::find_if(roles().begin(), roles().end(), [&](const Role& one) { return one.name == name; });
  return role == roles().end() ? nullptr : &*role;
}

std::optional<DesktopEntry> resolve(const Role& role, const DesktopEntryIndex& entries) {
  for (const auto& type : role.contentTypes) {
    const auto path = DefaultApplications::forContentType(type);
    if (!path) continue;
    if (const DesktopEntry* entry = entries.withPath(*path)) return *entry;
    if (auto read = DesktopEntry::read(*path)) return *std::move(read);
  }
  for (const auto& candidate : role.candidates) {
    if (const DesktopEntry* entry = entries.withIdentifier(candidate)) return *entry;
  }
  if (role.category.empty()) return std::nullopt;
  for (const auto& entry : entries.entries()) {
    const auto& categories = entry.categories;
    const bool fits = std::find(categories.begin(), categories.end(), role.category) != categories.end();
    if (entry.isShown && fits) return entry;
  }
  return std::nullopt;
}

} // namespace

RoleApplications::RoleApplications(DesktopEntryIndex& entries)
    : m_entries(entries), m_registration(entries.observeChanges([this] { m_known.clear(); })) {}

bool RoleApplications::isRole(const std::string& name) {
  return roleNamed(name) != nullptr;
}

std::optional<DesktopEntry> RoleApplications::entry(const std::string& name) const {
  const Role* role = roleNamed(name);
  if (!role) return std::nullopt;
  const auto known = m_known.find(name);
  if (known != m_known.end()) return known->second;
  return m_known.emplace(name, resolve(*role, m_entries)).first->second;
}

} // namespace orbel::linux
