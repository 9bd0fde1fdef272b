// Key combinations grabbed system-wide. Key codes are the stored virtual key codes; modifiers are the bits of
// the hot-key interface: Command 256, Shift 512, Option 2048, Control 4096. Called by the shortcut module
// alone.
#pragma once

#include "foundation/Registration.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace orbel {

// What the display server hands back with a press: who registered it, and the number of the registration.
struct HotKeyIdentity {
  std::uint32_t signature = 0;
  std::uint32_t number = 0;
  friend bool operator==(const HotKeyIdentity&, const HotKeyIdentity&) = default;
};

class HotKeys {
public:
  using Handler = std::function<void(HotKeyIdentity)>;
  virtual ~HotKeys() = default;

  // One process-wide handler for every press, called on the main thread; none while the registration is dead.
  // Empty when it cannot be installed, as while another one is.
  virtual Registration installHandler(Handler handler) = 0;
  // Empty when another program holds the combination, or the keyboard has no such key (both logged). Of
  // several registrations of one combination each hears of a press. All may end within the handler.
  virtual Registration registerHotKey(std::uint64_t keyCode, std::uint32_t modifiers,
                                      HotKeyIdentity identity) = 0;
  // Whether another program holds the combination; found out by trying, without keeping it.
  virtual bool isTakenByAnotherProgram(std::uint64_t keyCode, std::uint32_t modifiers) = 0;
};

} // namespace orbel
