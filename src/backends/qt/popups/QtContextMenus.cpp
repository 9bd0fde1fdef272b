#include "backends/qt/popups/QtContextMenus.h"

#include "backends/qt/popups/PoppedUpMenu.h"

#include <QCursor>

#include <utility>

namespace orbel::qt {

std::unique_ptr<OpenContextMenu> QtContextMenus::popUpAtPointer(std::vector<MenuEntry> entries,
                                                                ContextMenuDelegate* delegate) {
  return std::make_unique<PoppedUpMenu>(std::move(entries), delegate, m_popUps, QCursor::pos());
}

} // namespace orbel::qt
