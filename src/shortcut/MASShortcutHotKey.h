// One shortcut registered with the system as a hot key, for as long as the object lives. Owned by the
// monitor table.
#pragma once

#include "foundation/Registration.h"
#include "platform/HotKeys.h"
#include "shortcut/MASShortcut.h"

#include <cstdint>
#include <memory>

namespace orbel {

class MASShortcutHotKey {
public:
  // Registers at once; empty when the system refuses the combination or no handler of presses can be
  // installed. The block receives every answer of the system, those of this call included; after a later
  // refusal nothing is registered any more. It may destroy the object.
  static std::unique_ptr<MASShortcutHotKey> withShortcut(const MASShortcut& shortcut,
                                                         MASShortcut::Handler handler,
                                                         HotKeys::AnswerBlock answered = nullptr);
  ~MASShortcutHotKey();
  MASShortcutHotKey(const MASShortcutHotKey&) = delete;
  MASShortcutHotKey& operator=(const MASShortcutHotKey&) = delete;

  const MASShortcut& shortcut() const { return m_shortcut; }
  const MASShortcut::Handler& handler() const { return m_handler; }
  // The number of this registration, by which the system reports a press.
  std::uint32_t carbonHotKeyID() const { return m_carbonHotKeyID; }
  bool isInstalled() const { return static_cast<bool>(m_carbonHotKey); }

  // Gives the combination back to the system. Nothing happens when that was done already.
  void uninstallExisitingHotKey();

private:
  MASShortcutHotKey(const MASShortcut& shortcut, MASShortcut::Handler handler, HotKeys::AnswerBlock answered);
  bool install();
  void systemAnswered(const HotKeyAnswer& answer);

  MASShortcut m_shortcut;
  MASShortcut::Handler m_handler;
  HotKeys::AnswerBlock m_answered;
  std::uint32_t m_carbonHotKeyID = 0;
  Registration m_carbonHotKey;
};

} // namespace orbel
