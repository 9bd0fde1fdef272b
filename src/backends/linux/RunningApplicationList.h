// The programs that own an ordinary window, one record a process, in the order in which their first
// windows appeared. A process keeps its record object for as long as it is listed. Main thread only; used
// by the workspace.
#pragma once

#include "backends/common/TopLevelWindows.h"
#include "backends/linux/DesktopEntryIndex.h"
#include "backends/linux/FileIcons.h"
#include "backends/linux/LinuxRunningApplication.h"
#include "foundation/Observers.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel::linux {

class RunningApplicationList {
public:
  // The path of the desktop entry that was started under a startup identifier, or "".
  using StartedEntry = std::function<std::string(const std::string& startupId)>;

  // All of them outlive the list.
  RunningApplicationList(common::TopLevelWindows& windows, DesktopEntryIndex& entries, FileIcons& icons,
                         StartedEntry startedEntry);

  std::vector<RunningApplicationPointer> applications() const;
  // The program of the active window, also of one that is not ordinary; empty when there is none or it
  // is ours.
  RunningApplicationPointer frontmost();
  // The same by the record's own class, for the rules on programs.
  const std::vector<std::shared_ptr<LinuxRunningApplication>>& records() const { return m_records; }

  // After programs started or ended, or show themselves in another way.
  Registration observeChanges(std::function<void()> block);

  // Equal desktop-entry identifiers, or the bundle is the AppImage or executable that runs.
  static bool runsBundle(const LinuxRunningApplication& application, const std::string& bundlePath);

private:
  using Record = std::shared_ptr<LinuxRunningApplication>;
  void update();
  // The record of the window's program among those; empty when it is not there.
  static Record recordAmong(const std::vector<Record>& records, const common::TopLevelWindow& window);
  Record makeRecord(const common::TopLevelWindow& window) const;
  std::optional<DesktopEntry> entryFor(const common::TopLevelWindow& window,
                                       const LinuxRunningApplication& record) const;
  LinuxRunningApplication::Appearance appearanceFor(const common::TopLevelWindow& window,
                                                    const Record& record) const;
  ImagePointer iconFor(const std::optional<DesktopEntry>& entry, const Record& record) const;
  static void tellProgramsOfOneInterpreterApart(const std::vector<Record>& records);

  common::TopLevelWindows& m_windows;
  DesktopEntryIndex& m_entries;
  FileIcons& m_icons;
  StartedEntry m_startedEntry;
  std::vector<Record> m_records;
  Observers<> m_observers;
  Registration m_windowsRegistration;
  Registration m_entriesRegistration;
};

} // namespace orbel::linux
