// The program's own commands with their keys, as a menu bar would list them. Without a menu bar they are the
// keys of the settings window; the shortcut that summons the menu must not be one of them, since a global
// shortcut takes its keys from every program. Used by the application delegate.
#pragma once

#include "shortcut/ShortcutMenuItem.h"

namespace orbel {

class MainMenu {
public:
  // Titles in the user's language. Control as programs on this desktop have it, and Command.
  static ShortcutMenu entries();
};

} // namespace orbel
