// An entry of the program's own menu, as far as a keyboard shortcut can collide with it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orbel {

struct ShortcutMenuItem {
  std::string title;
  std::string keyEquivalent;      // one character; an upper-case letter implies Shift; empty for none
  std::uint64_t modifierMask = 0; // device-independent flags
  std::vector<ShortcutMenuItem> submenu;
};

using ShortcutMenu = std::vector<ShortcutMenuItem>;

} // namespace orbel
