// The one table between the stored virtual key codes and the kernel's key codes (evdev; an X key code is that
// plus 8). Both number positions on the keyboard, not what is printed on them. Used by every display server's
// backend.
#pragma once

#include <cstdint>
#include <optional>

namespace orbel::common {

class VirtualKeyCodes {
public:
  // None when no keyboard of this system has the key.
  static std::optional<std::uint16_t> evdevCode(std::uint64_t virtualKeyCode);
  // None for a key that a shortcut cannot name.
  static std::optional<std::uint64_t> virtualKeyCode(std::uint16_t evdevCode);
};

} // namespace orbel::common
