#include "backends/linux/LinuxWorkspace.h"

#include "backends/linux/DefaultApplications.h"
#include "backends/linux/GlibPointers.h"
#include "foundation/Log.h"

#include <sys/stat.h>

#include <utility>

namespace orbel::linux {

LinuxWorkspace::LinuxWorkspace(common::TopLevelWindows& windows, common::IconLoader& icons,
                               std::vector<std::string> privateVariables)
    : m_windows(windows), m_icons(icons, m_entries), m_bookmarks(m_entries), m_roles(m_entries),
      m_launcher(windows, std::move(privateVariables)),
      m_running(windows, m_entries, m_icons,
                [this](const std::string& startupId) { return m_launcher.entryStartedAs(startupId); }),
      m_finder(m_entries, m_roles, m_running),
      m_fileManager([this](const std::string& path) { openFolderWithHandler(path); }) {}

std::vector<RunningApplicationPointer> LinuxWorkspace::runningApplications() const {
  return m_running.applications();
}

Registration LinuxWorkspace::observeRunningApplications(std::function<void()> block) {
  return m_running.observeChanges(std::move(block));
}

RunningApplicationPointer LinuxWorkspace::frontmostApplication() {
  return m_running.frontmost();
}

bool LinuxWorkspace::runsBundle(const RunningApplication& application, const std::string& bundlePath) const {
  const auto* record = dynamic_cast<const LinuxRunningApplication*>(&application);
  return record && RunningApplicationList::runsBundle(*record, bundlePath);
}

bool LinuxWorkspace::playsRole(const RunningApplication& application, const std::string& name) const {
  const auto entry = m_roles.entry(name);
  return entry && runsBundle(application, entry->path);
}

Result<Workspace::Launch> LinuxWorkspace::launchApplication(const std::string& nameOrPath) {
  const auto application = m_finder.find(nameOrPath);
  if (!application) return Failure{"there is no application " + nameOrPath};
  // Which of them is meant only the caller knows, who can bring that one forward itself.
  if (application->runsMoreThanOnce) return Launch::ambiguous;
  if (const auto started = start(*application, {}); !started) return started.failure();
  return Launch::done;
}

Result<> LinuxWorkspace::launchApplicationAtPath(const std::string& bundlePath) {
  if (const auto application = m_finder.find(bundlePath)) return start(*application, {});
  switch (fileKind(bundlePath)) {
  case FileKind::missing:
    return Failure{bundlePath + " does not exist"};
  case FileKind::directory:
    return showFolder(bundlePath);
  case FileKind::file:
    break;
  }
  // It counts as an application by its name alone: what can be done with it is to open it.
  const auto opener = DefaultApplications::forFile(bundlePath);
  if (!opener) return Failure{"no application opens " + bundlePath};
  return m_launcher.launchEntry(*opener, {DefaultApplications::uriForPath(bundlePath)});
}

Result<> LinuxWorkspace::start(const ApplicationFinder::Application& application,
                               const std::string& documentPath) const {
  if (documentPath.empty() && application.running &&
      application.running->activate(ActivationReason::userChoice)) {
    return {};
  }
  if (!application.entryPath.empty()) {
    std::vector<std::string> uris;
    if (!documentPath.empty()) uris.push_back(DefaultApplications::uriForPath(documentPath));
    return m_launcher.launchEntry(application.entryPath, uris);
  }
  if (!application.executablePath.empty()) {
    std::vector<std::string> arguments;
    if (!documentPath.empty()) arguments.push_back(documentPath);
    return m_launcher.launchExecutable(application.executablePath, arguments);
  }
  return Failure{application.running->localizedName() + " has no program file that could be started"};
}

Result<> LinuxWorkspace::openFile(const std::string& path) {
  switch (fileKind(path)) {
  case FileKind::missing:
    return Failure{path + " does not exist"};
  case FileKind::directory:
    return showFolder(path);
  case FileKind::file:
    break;
  }
  if (m_entries.withPath(path)) return launchApplicationAtPath(path);
  const auto opener = DefaultApplications::forFile(path);
  if (!opener) return Failure{"no application opens " + path};
  return m_launcher.launchEntry(*opener, {DefaultApplications::uriForPath(path)});
}

Result<> LinuxWorkspace::openFileWithApplication(const std::string& path, const std::string& nameOrPath) {
  const auto application = m_finder.find(nameOrPath);
  if (!application) return Failure{"there is no application " + nameOrPath + " to open " + path};
  return start(*application, path);
}

Result<> LinuxWorkspace::openUrl(const std::string& url) {
  const auto handler = DefaultApplications::forUrl(url);
  if (!handler) return Failure{"no application opens the address " + url};
  return m_launcher.launchEntry(*handler, {url});
}

Result<> LinuxWorkspace::showFolder(const std::string& path) {
  if (fileKind(path) != FileKind::directory) return Failure{path + " is no folder"};
  m_fileManager.showFolder(path, m_windows.makeStartupId(displayName(path)));
  return {};
}

// The file manager may call this long after showFolder() has answered: no one else can log a failure.
void LinuxWorkspace::openFolderWithHandler(const std::string& path) const {
  const auto handler = DefaultApplications::forContentType("inode/directory");
  if (!handler) {
    Log::warning("no file manager shows " + path);
  } else {
    Log::warningIfFailed(m_launcher.launchEntry(*handler, {DefaultApplications::uriForPath(path)}));
  }
}

bool LinuxWorkspace::isApplicationBundle(const std::string& path) const {
  return DesktopEntry::isEntryPath(path) || ApplicationFinder::isAppImage(path);
}

std::optional<std::string> LinuxWorkspace::applicationForUrl(const std::string& url) const {
  return DefaultApplications::forUrl(url);
}

LinuxWorkspace::FileKind LinuxWorkspace::fileKind(const std::string& path) const {
  struct stat status {};
  if (path.empty() || ::stat(path.c_str(), &status) != 0) return FileKind::missing;
  return S_ISDIR(status.st_mode) ? FileKind::directory : FileKind::file;
}

std::string LinuxWorkspace::displayName(const std::string& path) const {
  if (path.empty()) return {};
  if (DesktopEntry::isEntryPath(path)) {
    if (const DesktopEntry* entry = m_entries.withPath(path)) return entry->name;
    if (const auto read = DesktopEntry::read(path)) return read->name;
  }
  // Also makes text of a name that is not in the system's encoding.
  return takeText(g_filename_display_basename(path.c_str()));
}

ImagePointer LinuxWorkspace::iconForFile(const std::string& path) const {
  return m_icons.iconForFile(path);
}

ImagePointer LinuxWorkspace::imageNamed(const std::string& name) const {
  return m_icons.imageNamed(name);
}

std::optional<std::string> LinuxWorkspace::defaultApplicationForFile(const std::string& path) const {
  return DefaultApplications::forFile(path);
}

std::vector<std::string> LinuxWorkspace::applicationsForFile(const std::string& path) const {
  return DefaultApplications::allForFile(path);
}

Result<PropertyList::Data> LinuxWorkspace::makeBookmark(const std::string& path) const {
  return m_bookmarks.make(path);
}

Result<ResolvedBookmark> LinuxWorkspace::resolveBookmark(const PropertyList::Data& bookmark) const {
  return m_bookmarks.resolve(bookmark);
}

} // namespace orbel::linux
