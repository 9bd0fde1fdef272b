// Key combinations grabbed system-wide. Key codes are the stored virtual key codes; modifiers are the bits of
// HotKeyModifier. Called by the shortcut module alone.
#pragma once

#include "foundation/Registration.h"
#include "foundation/Result.h"
#include "platform/HotKeyModifier.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace orbel {

// What the display server hands back with a press: who registered it, and the number of the registration.
struct HotKeyIdentity {
  std::uint32_t signature = 0;
  std::uint32_t number = 0;
  friend bool operator==(const HotKeyIdentity&, const HotKeyIdentity&) = default;
};

// How a registered combination stands with the desktop.
struct HotKeyStatus {
  enum class State {
    pending,        // the desktop has yet to answer
    bound,          // presses of the combination are reported
    boundByDesktop, // the desktop or its user has chosen the keys: presses of those are reported
  };
  State state = State::pending;
  std::string combination = {}; // as the desktop writes the keys it has chosen; empty where it does not say
};

// A failure is a refusal: another program holds the combination, the keyboard has no such key, or the user
// has said no.
using HotKeyAnswer = Result<HotKeyStatus>;

class HotKeys {
public:
  using Handler = std::function<void(HotKeyIdentity)>;
  using AnswerBlock = std::function<void(const HotKeyAnswer&)>;
  virtual ~HotKeys() = default;

  // One process-wide handler for every press, called on the main thread; none while the registration is dead.
  // Empty when it cannot be installed, as while another one is.
  virtual Registration installHandler(Handler handler) = 0;
  // The block, which may be empty, is called within this call by a desktop that answers at once, else later,
  // and again whenever the answer changes; never once the registration is dead. A refusal is the last answer
  // and leaves nothing registered; after one within this call the registration is empty. Of several
  // registrations of one combination each receives a press. All may end within the handler and the block.
  virtual Registration registerHotKey(std::uint64_t keyCode, std::uint32_t modifiers, HotKeyIdentity identity,
                                      AnswerBlock answered) = 0;
  // Whether another program holds the combination; found out without keeping it. None where the desktop does
  // not report it.
  virtual std::optional<bool> isTakenByAnotherProgram(std::uint64_t keyCode, std::uint32_t modifiers) = 0;
};

} // namespace orbel
