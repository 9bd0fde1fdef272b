// The one table between the stored virtual key codes and the kernel's key codes (evdev). Both number
// positions on the keyboard, not what is printed on them. Used by every display server's backend.
#pragma once

#include <cstdint>
#include <optional>

namespace orbel::common {

class VirtualKeyCodes {
public:
  // How far a key code of the X protocol, and of xkbcommon with it, is above the kernel's: the protocol has
  // no key codes below 8.
  static constexpr std::uint16_t kXKeyCodeOffset = 8;

  // None when no keyboard of this system has the key.
  static std::optional<std::uint16_t> evdevCode(std::uint64_t virtualKeyCode);
  // None for a key that a shortcut cannot name.
  static std::optional<std::uint64_t> virtualKeyCode(std::uint16_t evdevCode);
};

} // namespace orbel::common
