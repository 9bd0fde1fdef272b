#include "app/MainMenu.h"

#include "platform/Platform.h"
#include "platform/SettingsFormDescription.h"
#include "scene/Event.h"

namespace orbel {

std::vector<MainMenu::Key> MainMenu::keys() {
  std::vector<Key> keys{{Command::close, kEscapeKeyEquivalent}};
  for (const std::uint64_t modifier : {kControlFlag, kCommandFlag}) {
    keys.push_back({Command::close, "w", modifier});
    keys.push_back({Command::quit, "q", modifier});
  }
  return keys;
}

ShortcutMenu MainMenu::entries() {
  const TextServices& text = Platform::current().text;
  ShortcutMenu menu;
  for (const Key& key : keys()) {
    if (key.modifierFlags == 0) continue;
    const std::string title = key.command == Command::quit ? text.localized("Quit") : text.localized("Close");
    menu.push_back({title, key.keyEquivalent, key.modifierFlags, {}});
  }
  return menu;
}

} // namespace orbel
