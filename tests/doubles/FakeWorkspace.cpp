#include "doubles/FakeWorkspace.h"

#include <cstring>

namespace orbel {

namespace {
bool startsWith(const std::string& text, const std::string& prefix) {
  return text.rfind(prefix, 0) == 0;
}

ImagePointer plainIcon() {
  return std::make_shared<Image>(Size{320, 320}, [](int width, int height) { return Bitmap(width, height); });
}
} // namespace

Registration FakeWorkspace::observeRunningApplications(std::function<void()> block) {
  auto entry = std::make_shared<std::function<void()>>(std::move(block));
  m_observers->push_back(entry);
  return Registration([entry, observers = std::weak_ptr(m_observers)] {
    if (const auto list = observers.lock()) std::erase(*list, entry);
  });
}

void FakeWorkspace::notifyRunningApplications() const {
  const Observers observers = *m_observers;
  for (const auto& observer : observers)
    (*observer)();
}

bool FakeWorkspace::runsBundle(const RunningApplication& application, const std::string& bundlePath) const {
  return application.bundlePath() && *application.bundlePath() == bundlePath;
}

bool FakeWorkspace::playsRole(const RunningApplication& application, const std::string& name) const {
  const auto role = roleOfBundle.find(application.bundlePath().value_or(""));
  return role != roleOfBundle.end() && role->second == name;
}

bool FakeWorkspace::launchApplication(const std::string& nameOrPath) {
  actions.push_back("launch " + nameOrPath);
  return actionsSucceed;
}

std::optional<WorkspaceError> FakeWorkspace::launchApplicationAtPath(const std::string& bundlePath) {
  actions.push_back("launchPath " + bundlePath);
  if (actionsSucceed) return std::nullopt;
  return WorkspaceError{"cannot launch " + bundlePath};
}

bool FakeWorkspace::openFile(const std::string& path) {
  actions.push_back("openFile " + path);
  return actionsSucceed;
}

bool FakeWorkspace::openFileWithApplication(const std::string& path, const std::string& nameOrPath) {
  actions.push_back("openWith " + path + " | " + nameOrPath);
  return actionsSucceed;
}

bool FakeWorkspace::openUrl(const std::string& url) {
  actions.push_back("openUrl " + url);
  return actionsSucceed;
}

bool FakeWorkspace::showFolder(const std::string& path) {
  actions.push_back("showFolder " + path);
  return actionsSucceed;
}

std::optional<std::string> FakeWorkspace::applicationForUrl(const std::string& url) const {
  const auto handler = urlHandlers.find(url.substr(0, url.find(':')));
  if (handler == urlHandlers.end()) return std::nullopt;
  return handler->second;
}

Workspace::FileKind FakeWorkspace::fileKind(const std::string& path) const {
  const auto file = files.find(path);
  return file == files.end() ? FileKind::file : file->second;
}

std::string FakeWorkspace::displayName(const std::string& path) const {
  const auto name = displayNames.find(path);
  if (name != displayNames.end()) return name->second;
  return path.substr(path.find_last_of('/') + 1);
}

ImagePointer FakeWorkspace::iconForFile(const std::string& path) const {
  ++iconsAsked;
  auto& image = m_images["file " + path];
  if (!image) image = plainIcon();
  return image;
}

ImagePointer FakeWorkspace::imageNamed(const std::string& name) const {
  if (!namedImages.contains(name)) return nullptr;
  auto& image = m_images["named " + name];
  if (!image) image = plainIcon();
  return image;
}

std::optional<std::string> FakeWorkspace::defaultApplicationForFile(const std::string& path) const {
  const auto application = defaultApplications.find(path);
  if (application == defaultApplications.end()) return std::nullopt;
  return application->second;
}

std::vector<std::string> FakeWorkspace::applicationsForFile(const std::string& path) const {
  const auto applications = candidates.find(path);
  return applications == candidates.end() ? std::vector<std::string>() : applications->second;
}

PropertyList::Data FakeWorkspace::bookmark(const std::string& text) {
  PropertyList::Data data(text.size());
  std::memcpy(data.data(), text.data(), text.size());
  return data;
}

PropertyList::Data FakeWorkspace::makeBookmark(const std::string& path,
                                               std::optional<WorkspaceError>*) const {
  ++bookmarksMade;
  return bookmark(path);
}

ResolvedBookmark FakeWorkspace::resolveBookmark(const PropertyList::Data& data) const {
  std::string text(data.size(), '\0');
  if (!data.empty()) std::memcpy(text.data(), data.data(), data.size());
  if (text.empty() || startsWith(text, "broken:")) {
    return {std::nullopt, false, WorkspaceError{"the bookmark cannot be resolved"}};
  }
  if (startsWith(text, "stale:")) return {text.substr(6), true, std::nullopt};
  return {text, false, std::nullopt};
}

std::shared_ptr<FakeRunningApplication> FakeWorkspace::launch(std::int32_t pid, const std::string& name,
                                                              const std::string& bundle,
                                                              const std::string& executable) {
  auto application = std::make_shared<FakeRunningApplication>(pid, name, bundle, executable);
  running.push_back(application);
  notifyRunningApplications();
  return application;
}

void FakeWorkspace::terminate(std::int32_t pid) {
  for (const auto& application : running) {
    if (application->pid == pid) application->terminated = true;
  }
  std::erase_if(running, [pid](const auto& application) { return application->pid == pid; });
  notifyRunningApplications();
}

} // namespace orbel
