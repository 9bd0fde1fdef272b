#include "controllers/ItemContextMenu.h"

#include "model/RepresentsRunningApplication.h"
#include "platform/Platform.h"

#include <utility>

namespace orbel {

void ItemContextMenu::popUp(std::vector<MenuEntry> entries, const OrbelWindow& window) {
  m_openMenu = Platform::current().contextMenus.popUp(std::move(entries), this, window.surface(),
                                                      window.pointerLocationOrCenter());
}

void ItemContextMenu::cancelTracking() {
  if (m_openMenu) m_openMenu->cancelTracking();
}

void ItemContextMenu::menuDidClose() {
  Platform::current().runLoop.after(kClosingDelay, [this, life = m_lifetime.watch()] {
    if (!life.hasEnded()) m_itemMenuVisible = false;
  });
}

MenuEntry ItemContextMenu::openWithEntry(const MenuItem& item,
                                         const std::function<void(std::int64_t)>& chosen) {
  Workspace& workspace = Platform::current().workspace;
  std::vector<MenuEntry> entries;
  const auto paths = item.openWithAppPaths().value_or(std::vector<std::string>());
  for (std::size_t index = 0; index < paths.size(); ++index) {
    MenuEntry entry;
    entry.title = workspace.displayName(paths[index]);
    entry.tag = static_cast<std::int64_t>(index);
    entry.image = workspace.iconForFile(paths[index]);
    entry.action = [chosen](const MenuEntry& sender) { chosen(sender.tag); };
    entries.push_back(std::move(entry));
    if (index == 0) {
      MenuEntry separator;
      separator.isSeparator = true;
      entries.push_back(std::move(separator));
    }
  }
  MenuEntry openWith = entry("Open With...", !entries.empty(), nullptr);
  openWith.submenu = std::move(entries);
  return openWith;
}

bool ItemContextMenu::openWithTag(MenuItem& item, std::int64_t tag) {
  const auto paths = item.openWithAppPaths();
  if (!paths || tag < 0 || tag >= static_cast<std::int64_t>(paths->size())) return false;
  item.openWithAppPath((*paths)[static_cast<std::size_t>(tag)]);
  return true;
}

MenuEntry ItemContextMenu::quitEntry(const MenuItem& item, bool toolkitAvailable,
                                     std::function<void()> action) {
  MenuEntry quit = entry("Quit Application", item.canQuit() && toolkitAvailable, std::move(action));
  const auto* program = dynamic_cast<const RepresentsRunningApplication*>(&item);
  quit.isEnabled = program && program->canAskToQuit();
  return quit;
}

MenuEntry ItemContextMenu::entry(const std::string& englishTitle, bool shown, std::function<void()> action) {
  MenuEntry entry;
  entry.title = Platform::current().text.localized(englishTitle);
  entry.isHidden = !shown;
  if (action) entry.action = [action = std::move(action)](const MenuEntry&) { action(); };
  return entry;
}

} // namespace orbel
