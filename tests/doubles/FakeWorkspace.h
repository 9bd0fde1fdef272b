// A workspace over plain tables that records what it was asked to do. A bookmark is the path's bytes, with a
// prefix "stale:" or "broken:" for those cases.
#pragma once

#include "platform/Workspace.h"
#include "tests/doubles/FakeRunningApplication.h"
#include "tests/doubles/ObserverList.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace orbel {

class FakeWorkspace : public Workspace {
public:
  std::vector<RunningApplicationPointer> runningApplications() const override {
    if (!tellsRunningApplications) return {};
    return {running.begin(), running.end()};
  }
  Registration observeRunningApplications(std::function<void()> block) override;
  RunningApplicationPointer frontmostApplication() override {
    return tellsRunningApplications ? frontmost : nullptr;
  }
  bool runsBundle(const RunningApplication& application, const std::string& bundlePath) const override;
  bool playsRole(const RunningApplication& application, const std::string& name) const override;
  Result<Launch> launchApplication(const std::string& nameOrPath) override;
  Result<> launchApplicationAtPath(const std::string& bundlePath) override;
  Result<> openFile(const std::string& path) override;
  Result<> openFileWithApplication(const std::string& path, const std::string& nameOrPath) override;
  Result<> openUrl(const std::string& url) override;
  Result<> showFolder(const std::string& path) override;
  bool isApplicationBundle(const std::string& path) const override {
    return path.ends_with(".desktop") || path.ends_with(".AppImage");
  }
  std::optional<std::string> applicationForUrl(const std::string& url) const override;
  FileKind fileKind(const std::string& path) const override;
  std::string displayName(const std::string& path) const override;
  ImagePointer iconForFile(const std::string& path) const override;
  ImagePointer imageNamed(const std::string& name) const override;
  std::optional<std::string> defaultApplicationForFile(const std::string& path) const override;
  std::vector<std::string> applicationsForFile(const std::string& path) const override;
  Result<PropertyList::Data> makeBookmark(const std::string& path) const override;
  Result<ResolvedBookmark> resolveBookmark(const PropertyList::Data& bookmark) const override;

  static PropertyList::Data bookmark(const std::string& text);
  // Adds a regular running program and notifies the observers. An identifier that was used before is
  // another process.
  std::shared_ptr<FakeRunningApplication> launch(std::int32_t pid, const std::string& name,
                                                 const std::string& bundle = {},
                                                 const std::string& executable = {});
  void terminate(std::int32_t pid);
  // The file gets another path in the same folder; bookmarks of it are stale from then on.
  void move(const std::string& from, const std::string& to);
  void notifyRunningApplications() const;
  // The display reports at last what runs.
  void tellRunningApplications() {
    tellsRunningApplications = true;
    notifyRunningApplications();
  }
  std::size_t observerCount() const { return m_observers.size(); }

  std::vector<std::shared_ptr<FakeRunningApplication>> running;
  RunningApplicationPointer frontmost;
  bool tellsRunningApplications = true; // false: neither which programs run nor which is in front
  // One line an action: "launch NAME", "launchPath PATH", "openFile PATH", "openWith PATH | APP", "openUrl
  // URL", "showFolder PATH".
  std::vector<std::string> actions;
  bool actionsSucceed = true;
  std::set<std::string> unknownApplications;                  // names and paths that lead to none
  std::map<std::string, FileKind> files;                      // others are plain files
  std::map<std::string, std::string> displayNames;            // else the last path component
  std::map<std::string, std::string> urlHandlers;             // by scheme without the colon
  std::map<std::string, std::string> defaultApplications;     // by file path
  std::map<std::string, std::vector<std::string>> candidates; // by file path
  std::map<std::string, std::string> roleOfBundle;            // bundle path -> built-in name
  std::set<std::string> namedImages;
  mutable int iconsAsked = 0;
  mutable int bookmarksMade = 0;

private:
  // Writes the action down; fails when it cannot be done.
  Result<> act(const std::string& action, bool isPossible);

  ObserverList m_observers;
  std::map<std::int32_t, int> m_launches;        // by process identifier
  std::map<std::string, std::string> m_newPaths; // of files that were moved
  mutable std::map<std::string, ImagePointer> m_images;
};

} // namespace orbel
