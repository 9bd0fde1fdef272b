// The text of a key under the user's current keyboard layout. Asked by the shortcut value, for its display
// and its key equivalent. Main thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace orbel {

class KeyboardLayout {
public:
  virtual ~KeyboardLayout() = default;
  // What the key yields with no modifiers, dead keys as their spacing character; none when it yields nothing.
  virtual std::optional<std::string> textForKeyCode(std::uint64_t virtualKeyCode) const = 0;
};

} // namespace orbel
