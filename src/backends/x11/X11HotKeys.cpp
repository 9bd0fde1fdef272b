#include "backends/x11/X11HotKeys.h"

#include "backends/common/VirtualKeyCodes.h"
#include "backends/x11/PassiveKeyGrabs.h"
#include "foundation/Log.h"

#include <string>
#include <utility>

namespace orbel::x11 {

X11HotKeys::X11HotKeys(PassiveKeyGrabs& grabs) : m_grabs(grabs), m_handler(std::make_shared<Handler>()) {}

Registration X11HotKeys::installHandler(Handler handler) {
  if (*m_handler) {
    Log::error("a second hot-key handler cannot be installed beside the first");
    return {};
  }
  *m_handler = std::move(handler);
  return Registration([installed = m_handler] { *installed = nullptr; });
}

Registration X11HotKeys::registerHotKey(std::uint64_t keyCode, std::uint32_t modifiers,
                                        HotKeyIdentity identity, AnswerBlock answered) {
  auto grabbed = grab(keyCode, modifiers, identity);
  const HotKeyAnswer answer =
      grabbed ? HotKeyAnswer(HotKeyStatus{HotKeyStatus::State::bound}) : HotKeyAnswer(grabbed.failure());
  if (answered) answered(answer);
  return std::move(grabbed).valueOr(Registration());
}

Result<Registration> X11HotKeys::grab(std::uint64_t keyCode, std::uint32_t modifiers,
                                      HotKeyIdentity identity) {
  const auto evdevCode = common::VirtualKeyCodes::evdevCode(keyCode);
  if (!evdevCode)
    return Failure{"no keyboard here has the key with the virtual key code " + std::to_string(keyCode)};
  return m_grabs.grabIfFree({*evdevCode, modifiers}, [handler = m_handler, identity] {
    // A copy: the handler may end its own installation.
    if (const Handler current = *handler) current(identity);
  });
}

std::optional<bool> X11HotKeys::isTakenByAnotherProgram(std::uint64_t keyCode, std::uint32_t modifiers) {
  const auto evdevCode = common::VirtualKeyCodes::evdevCode(keyCode);
  return evdevCode && m_grabs.isHeldByAnother({*evdevCode, modifiers});
}

} // namespace orbel::x11
