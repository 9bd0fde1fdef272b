#include "model/AppMenuItem.h"

#include "foundation/Log.h"
#include "model/StoredItem.h"
#include "platform/Platform.h"

#include <string_view>
#include <utility>

namespace orbel {

namespace {

bool isExecutableInBundle(std::string_view executablePath, std::string_view bundlePath) {
  if (!executablePath.starts_with(bundlePath)) return false;
  const std::string_view rest = executablePath.substr(bundlePath.size());
  return rest.find(".app") == std::string_view::npos;
}

} // namespace

AppMenuItem::AppMenuItem(BookmarkedTarget target, std::optional<std::string> name)
    : m_target(std::move(target)), m_name(std::move(name)) {}

std::shared_ptr<AppMenuItem> AppMenuItem::withPath(const std::string& path) {
  const std::string name = Platform::current().workspace.displayName(path);
  return std::shared_ptr<AppMenuItem>(new AppMenuItem(BookmarkedTarget::withPath(path), name));
}

std::shared_ptr<AppMenuItem> AppMenuItem::withDictionaryRepresentation(const PropertyList& dictionary) {
  auto target = BookmarkedTarget::withDictionaryRepresentation(dictionary);
  if (target.isUnreachable()) return nullptr;
  return std::shared_ptr<AppMenuItem>(new AppMenuItem(std::move(target), StoredItem::name(dictionary)));
}

std::string AppMenuItem::identity() const {
  return kClassName + url().value_or("");
}

ImagePointer AppMenuItem::image() const {
  return m_target.icon(identity());
}

void AppMenuItem::open() {
  if (!url()) return;
  const auto launched = Platform::current().workspace.launchApplicationAtPath(*url());
  if (!launched) Log::error(launched.cause());
}

bool AppMenuItem::isRunning() const {
  return firstRepresentedApplication() != nullptr;
}

bool AppMenuItem::canOpenPath(const std::string& /*path*/) const {
  return true;
}

void AppMenuItem::openPath(const std::string& path) {
  if (url()) Log::warningIfFailed(Platform::current().workspace.openFileWithApplication(path, *url()));
}

void AppMenuItem::quit() {
  quitFirstRepresentedApplication();
}

std::optional<PropertyList> AppMenuItem::dictionaryRepresentation() const {
  auto dictionary = StoredItem::dictionary(kClassName, m_name);
  dictionary.emplace(StoredItem::kBookmarkDataKey, bookmarkData());
  return dictionary;
}

bool AppMenuItem::representsRunningApplication(const RunningApplication& application) const {
  if (!url()) return false;
  const auto executablePath = application.executablePath();
  if (executablePath && isExecutableInBundle(*executablePath, *url())) return true;
  return Platform::current().workspace.runsBundle(application, *url());
}

} // namespace orbel
