// The process's table of hot keys by shortcut text, the one handler of presses they share, and their
// numbering. Behind the static operations of MASShortcut, which are what other modules call.
#pragma once

#include "foundation/Observers.h"
#include "foundation/Registration.h"
#include "platform/HotKeys.h"
#include "shortcut/MASShortcut.h"
#include "shortcut/MASShortcutHotKey.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace orbel {

class MASShortcutMonitor {
public:
  // 'MASS', which marks the presses that are ours.
  static constexpr std::uint32_t kSignature = 0x4D415353;

  static MASShortcutMonitor& shared();

  // The block, which may be empty, receives every answer to the registration, those of this call included. A
  // refusal that comes later ends the monitor, as if it had never been added.
  MASShortcut::MonitorToken add(const MASShortcut& shortcut, MASShortcut::Handler handler,
                                HotKeys::AnswerBlock answered = nullptr);
  void remove(const MASShortcut::MonitorToken& token);

  // Installed with the first hot key, removed with the last. False when the system refuses it.
  bool installEventHandler();
  // Every registration has a number of its own, also one that fails; the first is 1.
  std::uint32_t nextHotKeyID() { return ++m_lastHotKeyID; }

  // Behind MASShortcut::observeHotKeyAnswers().
  Registration observeAnswers(std::function<void()> block) { return m_answerObservers.add(std::move(block)); }
  void answersDidChange() const { m_answerObservers.notify(); }

private:
  struct Entry {
    MASShortcut::MonitorToken token;
    std::unique_ptr<MASShortcutHotKey> hotKey;
  };
  void hotKeyAnswered(const std::string& text, const HotKeyAnswer& answer,
                      const HotKeys::AnswerBlock& answered);
  void dispatch(HotKeyIdentity identity) const;
  void removeEventHandlerIfUnused();

  std::map<std::string, Entry> m_monitors;
  std::uint32_t m_lastHotKeyID = 0;
  Registration m_eventHandler;
  Observers<> m_answerObservers;
};

} // namespace orbel
