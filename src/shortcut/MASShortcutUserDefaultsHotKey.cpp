#include "shortcut/MASShortcutUserDefaultsHotKey.h"

#include "foundation/Log.h"
#include "foundation/SharedObjects.h"
#include "platform/Platform.h"
#include "shortcut/MASShortcutMonitor.h"

#include <utility>

namespace orbel {

namespace {
struct BindingTable {
  // The bindings remove their hot keys when they are destroyed.
  BindingTable() { MASShortcutMonitor::shared(); }
  MASShortcut::UserDefaultsHotKeys bindings;
};

MASShortcut::UserDefaultsHotKeys& bindings() {
  return SharedObjects::current().get<BindingTable>().bindings;
}

std::optional<PropertyList> storedValue(const std::string& key) {
  const PropertyList* value = Platform::current().preferences.object(key);
  return value ? std::optional(*value) : std::nullopt;
}
} // namespace

MASShortcutUserDefaultsHotKey::MASShortcutUserDefaultsHotKey(std::string userDefaultsKey,
                                                             MASShortcut::Handler handler)
    : m_userDefaultsKey(std::move(userDefaultsKey)), m_handler(std::move(handler)) {
  m_storeObservation = Platform::current().preferences.observeChanges([this] { storeDidChange(); });
  installHotKeyFromUserDefaults();
}

MASShortcutUserDefaultsHotKey::~MASShortcutUserDefaultsHotKey() {
  m_storeObservation.reset();
  MASShortcut::removeGlobalHotkeyMonitor(m_monitor.lock());
}

void MASShortcutUserDefaultsHotKey::storeDidChange() {
  // Registering again for nothing would open a gap in which a press is lost.
  if (storedValue(m_userDefaultsKey) == m_installedValue) return;
  MASShortcut::removeGlobalHotkeyMonitor(m_monitor.lock());
  installHotKeyFromUserDefaults();
}

void MASShortcutUserDefaultsHotKey::retry() {
  if (!monitor()) installHotKeyFromUserDefaults();
}

void MASShortcutUserDefaultsHotKey::installHotKeyFromUserDefaults() {
  m_monitor.reset();
  m_installedValue = storedValue(m_userDefaultsKey);
  if (!m_installedValue) return;
  const PropertyList::Data* const data = m_installedValue->data();
  if (!data)
    Log::warning("what is stored under \"" + m_userDefaultsKey + "\" is no data and so no keyboard shortcut");
  if (const auto shortcut = MASShortcut::shortcutWithData(data)) {
    m_monitor = MASShortcut::addGlobalHotkeyMonitorWithShortcut(*shortcut, m_handler);
  }
}

void MASShortcut::registerGlobalShortcutWithUserDefaultsKey(const std::string& key, Handler handler) {
  auto binding = std::make_unique<MASShortcutUserDefaultsHotKey>(key, std::move(handler));
  bindings().insert_or_assign(key, std::move(binding));
}

void MASShortcut::unregisterGlobalShortcutWithUserDefaultsKey(const std::string& key) {
  bindings().erase(key);
}

void MASShortcut::setGlobalShortcut(const std::optional<MASShortcut>& shortcut,
                                    const std::string& userDefaultsKey) {
  if (shortcut) {
    storeGlobalShortcut(shortcut->data(), userDefaultsKey);
  } else {
    Platform::current().preferences.removeObject(userDefaultsKey);
  }
}

void MASShortcut::storeGlobalShortcut(PropertyList::Data data, const std::string& userDefaultsKey) {
  PropertyList value(std::move(data));
  const bool isStoredAlready = storedValue(userDefaultsKey) == value;
  Platform::current().preferences.setObject(userDefaultsKey, std::move(value));
  // Of a value that is there already the store tells nobody.
  const auto binding = bindings().find(userDefaultsKey);
  if (isStoredAlready && binding != bindings().end()) binding->second->retry();
}

const MASShortcut::UserDefaultsHotKeys& MASShortcut::registeredUserDefaultsHotKeys() {
  return bindings();
}

} // namespace orbel
