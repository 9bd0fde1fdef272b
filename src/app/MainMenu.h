// The program's own commands with their keys, as a menu bar would list them. Without a menu bar they are the
// keys of the settings window; the shortcut that summons the menu must not be one of them, since a global
// shortcut takes its keys from every program. Used by the application delegate and by the description of the
// settings window.
#pragma once

#include "shortcut/ShortcutMenuItem.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orbel {

class MainMenu {
public:
  enum class Command { close, quit };
  struct Key {
    Command command;
    std::string keyEquivalent;
    std::uint64_t modifierFlags = 0;
  };

  // Every key of the settings window. Control as programs on this desktop have it, and Command.
  static std::vector<Key> keys();
  // Those with a modifier, with titles in the user's language. Escape by itself is no command of the program:
  // it leaves every window.
  static ShortcutMenu entries();
};

} // namespace orbel
