// A hot key that follows a key of the preferences store: whatever shortcut is stored there is the one
// registered. Owned by the binding table behind MASShortcut::registerGlobalShortcutWithUserDefaultsKey.
#pragma once

#include "foundation/PropertyList.h"
#include "foundation/Registration.h"
#include "platform/HotKeys.h"
#include "shortcut/MASShortcut.h"

#include <memory>
#include <optional>
#include <string>

namespace orbel {

class MASShortcutUserDefaultsHotKey {
public:
  // Registers what is stored now and follows every change, of ours and from outside.
  MASShortcutUserDefaultsHotKey(std::string userDefaultsKey, MASShortcut::Handler handler);
  ~MASShortcutUserDefaultsHotKey();
  MASShortcutUserDefaultsHotKey(const MASShortcutUserDefaultsHotKey&) = delete;
  MASShortcutUserDefaultsHotKey& operator=(const MASShortcutUserDefaultsHotKey&) = delete;

  const std::string& userDefaultsKey() const { return m_userDefaultsKey; }
  const MASShortcut::Handler& handler() const { return m_handler; }
  // Empty while nothing is registered.
  MASShortcut::MonitorToken monitor() const { return m_monitor.lock(); }
  // What the desktop has answered so far; none while no shortcut is stored.
  const std::optional<HotKeyAnswer>& answer() const { return m_answer; }
  // Tries once more to register what is stored. Nothing happens while it is registered.
  void retry();

private:
  void storeDidChange();
  void installHotKeyFromUserDefaults();

  std::string m_userDefaultsKey;
  MASShortcut::Handler m_handler;
  // What was under the key when the hot key was last installed: the store announces changes of any key.
  std::optional<PropertyList> m_installedValue;
  std::optional<HotKeyAnswer> m_answer;
  std::weak_ptr<const std::string> m_monitor;
  Registration m_storeObservation;
};

} // namespace orbel
