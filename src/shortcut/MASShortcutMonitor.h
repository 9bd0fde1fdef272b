// The process's table of hot keys by shortcut text, the one handler of presses they share, and their
// numbering. Behind the static operations of MASShortcut, which are what other modules call.
#pragma once

#include "foundation/Registration.h"
#include "platform/HotKeys.h"
#include "shortcut/MASShortcut.h"
#include "shortcut/MASShortcutHotKey.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace orbel {

class MASShortcutMonitor {
public:
  // 'MASS', which marks the presses that are ours.
  static constexpr std::uint32_t kSignature = 0x4D415353;

  static MASShortcutMonitor& shared();

  MASShortcut::MonitorToken add(const MASShortcut& shortcut, MASShortcut::Handler handler);
  void remove(const MASShortcut::MonitorToken& token);

  // Installed with the first hot key, gone with the last. False when the system refuses it.
  bool installEventHandler();
  // Every registration has a number of its own, also one that fails; the first is 1.
  std::uint32_t nextHotKeyID() { return ++m_lastHotKeyID; }

private:
  struct Entry {
    MASShortcut::MonitorToken token;
    std::unique_ptr<MASShortcutHotKey> hotKey;
  };
  void dispatch(HotKeyIdentity identity) const;
  void removeEventHandlerIfUnused();

  std::map<std::string, Entry> m_monitors;
  std::uint32_t m_lastHotKeyID = 0;
  Registration m_eventHandler;
};

} // namespace orbel
