// Context menus as Qt's own pop-up menus. While one is open it holds the pointer and the keyboard, so it is
// above everything and usable by keyboard without the focus moving. Used by the menu controllers.
#pragma once

#include "backends/qt/popups/PopUpRegistry.h"
#include "platform/ContextMenus.h"

#include <memory>
#include <vector>

namespace orbel::qt {

class QtContextMenus final : public ContextMenus {
public:
  // The registry is borrowed and must outlive every open menu.
  explicit QtContextMenus(PopUpRegistry& popUps) : m_popUps(popUps) {}

  // The delegate receives menuWillOpen from within this call. A menu without a visible entry never opens and
  // calls nothing.
  std::unique_ptr<OpenContextMenu> popUp(std::vector<MenuEntry> entries, ContextMenuDelegate* delegate,
                                         const Surface& surface, Point place) override;

private:
  PopUpRegistry& m_popUps;
};

} // namespace orbel::qt
