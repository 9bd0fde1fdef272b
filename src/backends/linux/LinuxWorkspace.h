// The Linux desktop's programs and files, put together from the classes of this folder. Works without a
// session bus, without a window manager and without an icon theme, each costing only what it gives.
#pragma once

#include "backends/common/IconLoader.h"
#include "backends/common/TopLevelWindows.h"
#include "backends/linux/ApplicationFinder.h"
#include "backends/linux/Bookmarks.h"
#include "backends/linux/DesktopEntryIndex.h"
#include "backends/linux/FileIcons.h"
#include "backends/linux/FileManager.h"
#include "backends/linux/Launcher.h"
#include "backends/linux/RoleApplications.h"
#include "backends/linux/RunningApplicationList.h"
#include "platform/Workspace.h"

#include <string>
#include <vector>

namespace orbel::linux {

class LinuxWorkspace : public Workspace {
public:
  // Windows and icons outlive the workspace. Private variables: see Launcher.
  LinuxWorkspace(common::TopLevelWindows& windows, common::IconLoader& icons,
                 std::vector<std::string> privateVariables = {});

  std::vector<RunningApplicationPointer> runningApplications() const override;
  Registration observeRunningApplications(std::function<void()> block) override;
  RunningApplicationPointer frontmostApplication() override;
  bool runsBundle(const RunningApplication& application, const std::string& bundlePath) const override;
  bool playsRole(const RunningApplication& application, const std::string& name) const override;

  Result<Launch> launchApplication(const std::string& nameOrPath) override;
  Result<> launchApplicationAtPath(const std::string& bundlePath) override;
  Result<> openFile(const std::string& path) override;
  Result<> openFileWithApplication(const std::string& path, const std::string& nameOrPath) override;
  Result<> openUrl(const std::string& url) override;
  Result<> showFolder(const std::string& path) override;
  bool isApplicationBundle(const std::string& path) const override;
  std::optional<std::string> applicationForUrl(const std::string& url) const override;

  FileKind fileKind(const std::string& path) const override;
  std::string displayName(const std::string& path) const override;
  ImagePointer iconForFile(const std::string& path) const override;
  ImagePointer imageNamed(const std::string& name) const override;

  std::optional<std::string> defaultApplicationForFile(const std::string& path) const override;
  std::vector<std::string> applicationsForFile(const std::string& path) const override;

  Result<PropertyList::Data> makeBookmark(const std::string& path) const override;
  Result<ResolvedBookmark> resolveBookmark(const PropertyList::Data& bookmark) const override;

private:
  Result<> start(const ApplicationFinder::Application& application, const std::string& documentPath) const;
  void openFolderWithHandler(const std::string& path) const;

  common::TopLevelWindows& m_windows;
  DesktopEntryIndex m_entries;
  mutable FileIcons m_icons; // hands out the same picture twice; asking changes nothing that can be seen
  Bookmarks m_bookmarks;
  RoleApplications m_roles;
  Launcher m_launcher;
  RunningApplicationList m_running;
  ApplicationFinder m_finder;
  FileManager m_fileManager;
};

} // namespace orbel::linux
