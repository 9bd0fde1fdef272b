#include "app/MainMenu.h"

#include "platform/Platform.h"
#include "scene/Event.h"

namespace orbel {

ShortcutMenu MainMenu::entries() {
  const TextServices& text = Platform::current().text;
  ShortcutMenu menu;
  for (const std::uint64_t modifier : {kControlFlag, kCommandFlag}) {
    menu.push_back({text.localized("Close"), "w", modifier, {}});
    menu.push_back({text.localized("Quit"), "q", modifier, {}});
  }
  return menu;
}

} // namespace orbel
