// The context menu of an item: builds the "Open With..." choices, pops the menu up, and remembers for half a
// second after it closed that it was open, so that the click which closed it does not open it again. Owned by
// a menu controller.
#pragma once

#include "chrome/OrbelWindow.h"
#include "foundation/Lifetime.h"
#include "model/MenuItem.h"
#include "platform/ContextMenus.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orbel {

class ItemContextMenu : public ContextMenuDelegate {
public:
  // Seconds.
  static constexpr double kClosingDelay = 0.5;

  bool itemMenuVisible() const { return m_itemMenuVisible; }
  // At the pointer over the window.
  void popUp(std::vector<MenuEntry> entries, const OrbelWindow& window);
  // Closes the open menu without an action.
  void cancelTracking();

  void menuWillOpen() override { m_itemMenuVisible = true; }
  void menuDidClose() override;

  // "Open With..." with one entry an application that opens the item, tagged with its index; the default
  // stands alone above a separator. Hidden when there is none. The block gets the tag.
  static MenuEntry openWithEntry(const MenuItem& item, const std::function<void(std::int64_t)>& chosen);
  // Opens the item with the application of that tag. False, and nothing done, when there is none.
  static bool openWithTag(MenuItem& item, std::int64_t tag);
  // "Quit Application": shown for an item that can quit where the companion is there, and enabled where its
  // program can be asked to close.
  static MenuEntry quitEntry(const MenuItem& item, bool toolkitAvailable, std::function<void()> action);
  static MenuEntry entry(const std::string& englishTitle, bool shown, std::function<void()> action);

private:
  bool m_itemMenuVisible = false;
  std::unique_ptr<OpenContextMenu> m_openMenu;
  Lifetime m_lifetime; // the delay may outlast the menu
};

} // namespace orbel
