#include "shortcut/MASShortcutHotKey.h"

#include "platform/Platform.h"
#include "shortcut/MASShortcutMonitor.h"

#include <utility>

namespace orbel {

std::unique_ptr<MASShortcutHotKey> MASShortcutHotKey::withShortcut(const MASShortcut& shortcut,
                                                                   MASShortcut::Handler handler) {
  std::unique_ptr<MASShortcutHotKey> hotKey(new MASShortcutHotKey(shortcut, std::move(handler)));
  return hotKey->install() ? std::move(hotKey) : nullptr;
}

MASShortcutHotKey::MASShortcutHotKey(const MASShortcut& shortcut, MASShortcut::Handler handler)
    : m_shortcut(shortcut), m_handler(std::move(handler)) {}

MASShortcutHotKey::~MASShortcutHotKey() {
  uninstallExisitingHotKey();
}

bool MASShortcutHotKey::install() {
  MASShortcutMonitor& monitor = MASShortcutMonitor::shared();
  if (!monitor.installEventHandler()) return false;
  const std::uint32_t number = monitor.nextHotKeyID();
  m_carbonHotKey = Platform::current().hotKeys.registerHotKey(
      m_shortcut.carbonKeyCode(), m_shortcut.carbonFlags(), {MASShortcutMonitor::kSignature, number});
  if (m_carbonHotKey) m_carbonHotKeyID = number;
  return isInstalled();
}

void MASShortcutHotKey::uninstallExisitingHotKey() {
  m_carbonHotKey.reset();
}

} // namespace orbel
