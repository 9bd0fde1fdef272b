#include "model/CoreMenuItem.h"

#include "foundation/Log.h"
#include "model/StoredItem.h"
#include "platform/Platform.h"

namespace orbel {

CoreMenuItem::CoreMenuItem(std::optional<std::string> name) : m_name(std::move(name)) {}

std::shared_ptr<CoreMenuItem> CoreMenuItem::withName(const std::string& name) {
  return std::shared_ptr<CoreMenuItem>(new CoreMenuItem(name));
}

std::shared_ptr<CoreMenuItem> CoreMenuItem::withDictionaryRepresentation(const PropertyList& dictionary) {
  return std::shared_ptr<CoreMenuItem>(new CoreMenuItem(StoredItem::name(dictionary)));
}

std::string CoreMenuItem::identity() const {
  return kClassName + m_name.value_or("");
}

ImagePointer CoreMenuItem::image() const {
  return m_name ? Platform::current().workspace.imageNamed(*m_name) : nullptr;
}

void CoreMenuItem::open() {
  if (m_name) Log::warningIfFailed(Platform::current().workspace.launchApplication(*m_name));
}

bool CoreMenuItem::isRunning() const {
  return firstRepresentedApplication() != nullptr;
}

bool CoreMenuItem::canOpenPath(const std::string& /*path*/) const {
  return m_name != "Launchpad" && m_name != "App Store";
}

void CoreMenuItem::openPath(const std::string& path) {
  if (m_name) Log::warningIfFailed(Platform::current().workspace.openFileWithApplication(path, *m_name));
}

void CoreMenuItem::quit() {
  quitFirstRepresentedApplication();
}

std::optional<PropertyList> CoreMenuItem::dictionaryRepresentation() const {
  return StoredItem::dictionary(kClassName, m_name);
}

bool CoreMenuItem::representsRunningApplication(const RunningApplication& application) const {
  if (!m_name) return false;
  return application.localizedName() == *m_name ||
         Platform::current().workspace.playsRole(application, *m_name);
}

} // namespace orbel
