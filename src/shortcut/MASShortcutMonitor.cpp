#include "shortcut/MASShortcutMonitor.h"

#include "foundation/Log.h"
#include "foundation/SharedObjects.h"
#include "platform/Platform.h"

#include <utility>

namespace orbel {

MASShortcutMonitor& MASShortcutMonitor::shared() {
  return SharedObjects::current().get<MASShortcutMonitor>();
}

MASShortcut::MonitorToken MASShortcutMonitor::add(const MASShortcut& shortcut, MASShortcut::Handler handler,
                                                  HotKeys::AnswerBlock answered) {
  std::string text = shortcut.description();
  if (m_monitors.contains(text)) {
    if (answered) answered(Failure{text + " is registered already"});
    return nullptr;
  }
  auto hotKey = MASShortcutHotKey::withShortcut(
      shortcut, std::move(handler), [this, text, answered = std::move(answered)](const HotKeyAnswer& answer) {
        hotKeyAnswered(text, answer, answered);
      });
  if (!hotKey) {
    removeEventHandlerIfUnused();
    return nullptr;
  }
  auto token = std::make_shared<const std::string>(text);
  m_monitors.emplace(std::move(text), Entry{token, std::move(hotKey)});
  return token;
}

void MASShortcutMonitor::remove(const MASShortcut::MonitorToken& token) {
  if (!token) return;
  // A copy: the table may hold the last reference but the caller's own, and the caller's may be the table's.
  const std::string text = *token;
  m_monitors.erase(text);
  removeEventHandlerIfUnused();
}

void MASShortcutMonitor::hotKeyAnswered(const std::string& text, const HotKeyAnswer& answer,
                                        const HotKeys::AnswerBlock& answered) {
  if (!answer) Log::warning(answer.cause());
  // An answer within add() comes before the monitor is in the table.
  const auto monitor = m_monitors.find(text);
  const bool isLate = monitor != m_monitors.end();
  if (isLate && !answer) {
    m_monitors.erase(monitor);
    removeEventHandlerIfUnused();
  }
  if (answered) answered(answer);
  if (isLate) answersDidChange();
}

bool MASShortcutMonitor::installEventHandler() {
  if (!m_eventHandler) {
    m_eventHandler =
        Platform::current().hotKeys.installHandler([this](HotKeyIdentity identity) { dispatch(identity); });
  }
  return static_cast<bool>(m_eventHandler);
}

void MASShortcutMonitor::dispatch(HotKeyIdentity identity) const {
  if (identity.signature != kSignature) return;
  for (const auto& [text, entry] : m_monitors) {
    if (entry.hotKey->carbonHotKeyID() != identity.number) continue;
    // A copy, because the handler may remove its own hot key.
    const MASShortcut::Handler handler = entry.hotKey->handler();
    if (handler) handler();
    return;
  }
}

void MASShortcutMonitor::removeEventHandlerIfUnused() {
  if (m_monitors.empty()) m_eventHandler.reset();
}

MASShortcut::MonitorToken MASShortcut::addGlobalHotkeyMonitorWithShortcut(const MASShortcut& shortcut,
                                                                          Handler handler) {
  return MASShortcutMonitor::shared().add(shortcut, std::move(handler));
}

void MASShortcut::removeGlobalHotkeyMonitor(const MonitorToken& token) {
  MASShortcutMonitor::shared().remove(token);
}

} // namespace orbel
