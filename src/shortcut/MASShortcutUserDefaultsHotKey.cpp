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
  MASShortcutMonitor::shared().answersDidChange();
}

void MASShortcutUserDefaultsHotKey::retry() {
  if (monitor()) return;
  installHotKeyFromUserDefaults();
  MASShortcutMonitor::shared().answersDidChange();
}

void MASShortcutUserDefaultsHotKey::installHotKeyFromUserDefaults() {
  m_monitor.reset();
  m_answer.reset();
  m_installedValue = storedValue(m_userDefaultsKey);
  if (!m_installedValue) return;
  const PropertyList::Data* const data = m_installedValue->data();
  if (!data)
    Log::warning("what is stored under \"" + m_userDefaultsKey + "\" is no data and so no keyboard shortcut");
  if (const auto shortcut = MASShortcut::shortcutWithData(data)) {
    m_answer = HotKeyStatus{}; // pending, unless the answer comes within the call
    m_monitor = MASShortcutMonitor::shared().add(*shortcut, m_handler,
                                                 [this](const HotKeyAnswer& answer) { m_answer = answer; });
  }
}

void MASShortcut::registerGlobalShortcutWithUserDefaultsKey(const std::string& key, Handler handler) {
  auto binding = std::make_unique<MASShortcutUserDefaultsHotKey>(key, std::move(handler));
  bindings().insert_or_assign(key, std::move(binding));
  MASShortcutMonitor::shared().answersDidChange();
}

void MASShortcut::unregisterGlobalShortcutWithUserDefaultsKey(const std::string& key) {
  if (bindings().erase(key) > 0) MASShortcutMonitor::shared().answersDidChange();
}

std::optional<HotKeyAnswer> MASShortcut::hotKeyAnswer(const std::string& userDefaultsKey) {
  const auto binding = bindings().find(userDefaultsKey);
  return binding == bindings().end() ? std::nullopt : binding->second->answer();
}

Registration MASShortcut::observeHotKeyAnswers(std::function<void()> block) {
  return MASShortcutMonitor::shared().observeAnswers(std::move(block));
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
  // The store notifies no observer of a value that is there already.
  const auto binding = bindings().find(userDefaultsKey);
  if (isStoredAlready && binding != bindings().end()) binding->second->retry();
}

const MASShortcut::UserDefaultsHotKeys& MASShortcut::registeredUserDefaultsHotKeys() {
  return bindings();
}

} // namespace orbel
