// The installed desktop entries, read once and again only after the desktop says that they changed.
// Identifiers carry ".desktop". Pointers are valid until the next change. Main thread only; used by
// everything here that turns a window, process, name or file into a program.
#pragma once

#include "backends/linux/DesktopEntry.h"
#include "foundation/Observers.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace orbel::linux {

class DesktopEntryIndex {
public:
  DesktopEntryIndex();
  ~DesktopEntryIndex();
  DesktopEntryIndex(const DesktopEntryIndex&) = delete;
  DesktopEntryIndex& operator=(const DesktopEntryIndex&) = delete;

  // Hidden entries are left out; entries with NoDisplay are there, because a running window may be theirs.
  const std::vector<DesktopEntry>& entries() const;

  // With or without ".desktop"; exact, else without regard to case. An empty pointer when there is none,
  // as below.
  const DesktopEntry* withIdentifier(const std::string& identifier) const;
  // By StartupWMClass, exact, else without regard to case.
  const DesktopEntry* withStartupWindowClass(const std::string& name) const;
  // Only where the program is certain: the entry that runs it without arguments of its own, or the only one
  // that runs it at all. Entries that run in a terminal are never meant: the window is the terminal's.
  const DesktopEntry* withExecutable(const std::string& path) const;
  const DesktopEntry* withPath(const std::string& path) const;
  // By its localized Name, shown ones first; exact, else without regard to case.
  const DesktopEntry* withName(const std::string& name) const;

  // The identifier that a file has by its place in the data folders (also one that another entry stands
  // before), else its file name; empty when the path is no entry's.
  static std::string identifierForPath(const std::string& path);

  // Calls the block after entries or default applications changed; the new ones can be read then.
  Registration observeChanges(std::function<void()> block);

private:
  struct Monitor;
  struct Tables;
  const Tables& tables() const;
  std::unique_ptr<Monitor> m_monitor;
  mutable std::unique_ptr<Tables> m_tables; // none while nothing was asked since the last change
  Observers<> m_observers;
};

} // namespace orbel::linux
