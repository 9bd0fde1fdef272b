// Hot keys by passive grabs on the root window. Called by the shortcut module.
#pragma once

#include "platform/HotKeys.h"

#include <memory>

namespace orbel::x11 {

class PassiveKeyGrabs;

class X11HotKeys : public HotKeys {
public:
  explicit X11HotKeys(PassiveKeyGrabs& grabs);

  // Empty while another handler is installed.
  Registration installHandler(Handler handler) override;
  // Answers within the call, once. A grab that cannot follow a change of the keyboard layout comes back with
  // the next change and is only logged.
  Registration registerHotKey(std::uint64_t keyCode, std::uint32_t modifiers, HotKeyIdentity identity,
                              AnswerBlock answered) override;
  std::optional<bool> isTakenByAnotherProgram(std::uint64_t keyCode, std::uint32_t modifiers) override;

private:
  Result<Registration> grab(std::uint64_t keyCode, std::uint32_t modifiers, HotKeyIdentity identity);

  PassiveKeyGrabs& m_grabs;
  std::shared_ptr<Handler> m_handler; // what it points to is empty while none is installed
};

} // namespace orbel::x11
