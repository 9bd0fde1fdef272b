// The modifiers of a system-wide key combination, as bits of one number. Made by the shortcut module, read by
// the display servers' backends.
#pragma once

#include <cstdint>

namespace orbel {

// The values are not ours to choose: MASShortcut::carbonFlags() is known to give these.
enum HotKeyModifier : std::uint32_t {
  kHotKeyCommand = 256, // Super
  kHotKeyShift = 512,
  kHotKeyOption = 2048, // Alt
  kHotKeyControl = 4096,
};

} // namespace orbel
