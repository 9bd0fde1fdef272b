#include "tests/doubles/FakeWorkspace.h"

#include <algorithm>
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
  return m_observers.add(std::move(block));
}

void FakeWorkspace::notifyRunningApplications() const {
  m_observers.call();
}

bool FakeWorkspace::runsBundle(const RunningApplication& application, const std::string& bundlePath) const {
  return application.bundlePath() && *application.bundlePath() == bundlePath;
}

bool FakeWorkspace::playsRole(const RunningApplication& application, const std::string& name) const {
  const auto role = roleOfBundle.find(application.bundlePath().value_or(""));
  return role != roleOfBundle.end() && role->second == name;
}

Result<> FakeWorkspace::act(const std::string& action, bool isPossible) {
  actions.push_back(action);
  if (isPossible && actionsSucceed) return {};
  return Failure{"cannot " + action};
}

Result<Workspace::Launch> FakeWorkspace::launchApplication(const std::string& nameOrPath) {
  const auto runsPath = [&](const auto& application) { return application->executableFile == nameOrPath; };
  if (std::count_if(running.begin(), running.end(), runsPath) > 1) return Launch::ambiguous;
  const auto launched = act("launch " + nameOrPath, !unknownApplications.contains(nameOrPath));
  if (!launched) return launched.failure();
  return Launch::done;
}

Result<> FakeWorkspace::launchApplicationAtPath(const std::string& bundlePath) {
  actions.push_back("launchPath " + bundlePath);
  if (actionsSucceed && fileKind(bundlePath) != FileKind::missing) return {};
  return Failure{"cannot launch " + bundlePath};
}

Result<> FakeWorkspace::openFile(const std::string& path) {
  return act("openFile " + path, fileKind(path) != FileKind::missing);
}

Result<> FakeWorkspace::openFileWithApplication(const std::string& path, const std::string& nameOrPath) {
  return act("openWith " + path + " | " + nameOrPath, !unknownApplications.contains(nameOrPath));
}

Result<> FakeWorkspace::openUrl(const std::string& url) {
  return act("openUrl " + url, applicationForUrl(url).has_value());
}

Result<> FakeWorkspace::showFolder(const std::string& path) {
  const auto known = files.find(path);
  return act("showFolder " + path, known == files.end() || known->second == FileKind::directory);
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
  const auto end = path.find_last_not_of('/');
  if (end == std::string::npos) return path.substr(0, 1);
  const std::string file = path.substr(0, end + 1);
  return file.substr(file.find_last_of('/') + 1);
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
  std::vector<std::string> all;
  if (const auto applications = candidates.find(path); applications != candidates.end())
    all = applications->second;
  const auto usual = defaultApplicationForFile(path);
  if (usual && std::find(all.begin(), all.end(), *usual) == all.end()) all.insert(all.begin(), *usual);
  return all;
}

PropertyList::Data FakeWorkspace::bookmark(const std::string& text) {
  PropertyList::Data data(text.size());
  std::memcpy(data.data(), text.data(), text.size());
  return data;
}

Result<PropertyList::Data> FakeWorkspace::makeBookmark(const std::string& path) const {
  const bool isMarked = startsWith(path, "stale:") || startsWith(path, "broken:");
  if (!isMarked && (!startsWith(path, "/") || fileKind(path) == FileKind::missing))
    return Failure{"no bookmark of " + path};
  ++bookmarksMade;
  return bookmark(path);
}

Result<ResolvedBookmark> FakeWorkspace::resolveBookmark(const PropertyList::Data& data) const {
  std::string text(data.size(), '\0');
  if (!data.empty()) std::memcpy(text.data(), data.data(), data.size());
  if (startsWith(text, "stale:")) return ResolvedBookmark{text.substr(6), true, {}};
  if (startsWith(text, "warning:"))
    return ResolvedBookmark{text.substr(8), false, Failure{"not all of it was found"}};
  const auto moved = m_newPaths.find(text);
  if (moved != m_newPaths.end()) return ResolvedBookmark{moved->second, true, {}};
  if (!startsWith(text, "/") || fileKind(text) == FileKind::missing)
    return Failure{"the bookmark cannot be resolved"};
  return ResolvedBookmark{text, false, {}};
}

std::shared_ptr<FakeRunningApplication> FakeWorkspace::launch(std::int32_t pid, const std::string& name,
                                                              const std::string& bundle,
                                                              const std::string& executable) {
  auto application = std::make_shared<FakeRunningApplication>(pid, name, bundle, executable);
  application->startTime = m_launches[pid]++;
  running.push_back(application);
  notifyRunningApplications();
  return application;
}

void FakeWorkspace::terminate(std::int32_t pid) {
  for (const auto& application : running) {
    if (application->pid != pid) continue;
    application->terminated = true;
    application->policy = ActivationPolicy::accessory; // its windows were closed first
  }
  if (frontmost && frontmost->processIdentifier() == pid) frontmost = nullptr;
  std::erase_if(running, [pid](const auto& application) { return application->pid == pid; });
  notifyRunningApplications();
}

void FakeWorkspace::move(const std::string& from, const std::string& to) {
  files[to] = fileKind(from);
  files[from] = FileKind::missing;
  m_newPaths[from] = to;
}

} // namespace orbel
