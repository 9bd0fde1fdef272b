#include "shortcut/MASShortcutHotKey.h"

#include "platform/Platform.h"
#include "shortcut/MASShortcutMonitor.h"

#include <utility>

namespace orbel {

std::unique_ptr<MASShortcutHotKey> MASShortcutHotKey::withShortcut(const MASShortcut& shortcut,
                                                                   MASShortcut::Handler handler,
                                                                   HotKeys::AnswerBlock answered) {
  std::unique_ptr<MASShortcutHotKey> hotKey(
      new MASShortcutHotKey(shortcut, std::move(handler), std::move(answered)));
  return hotKey->install() ? std::move(hotKey) : nullptr;
}

MASShortcutHotKey::MASShortcutHotKey(const MASShortcut& shortcut, MASShortcut::Handler handler,
                                     HotKeys::AnswerBlock answered)
    : m_shortcut(shortcut), m_handler(std::move(handler)), m_answered(std::move(answered)) {}

MASShortcutHotKey::~MASShortcutHotKey() {
  uninstallExisitingHotKey();
}

bool MASShortcutHotKey::install() {
  MASShortcutMonitor& monitor = MASShortcutMonitor::shared();
  if (!monitor.installEventHandler()) {
    if (m_answered) m_answered(Failure{"the presses of hot keys cannot be received"});
    return false;
  }
  const std::uint32_t number = monitor.nextHotKeyID();
  m_carbonHotKey = Platform::current().hotKeys.registerHotKey(
      m_shortcut.carbonKeyCode(), m_shortcut.carbonFlags(), {MASShortcutMonitor::kSignature, number},
      [this](const HotKeyAnswer& answer) { systemAnswered(answer); });
  if (m_carbonHotKey) m_carbonHotKeyID = number;
  return isInstalled();
}

void MASShortcutHotKey::systemAnswered(const HotKeyAnswer& answer) {
  // Copies, because the registration is destroyed by a refusal, and this object perhaps by the block.
  const auto answered = m_answered;
  const HotKeyAnswer given = answer;
  if (!given) uninstallExisitingHotKey();
  if (answered) answered(given);
}

void MASShortcutHotKey::uninstallExisitingHotKey() {
  m_carbonHotKey.reset();
}

} // namespace orbel
