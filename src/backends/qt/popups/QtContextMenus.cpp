#include "backends/qt/popups/QtContextMenus.h"

#include "backends/qt/popups/PoppedUpMenu.h"
#include "backends/qt/windows/ScreenSpace.h"
#include "platform/Surface.h"

#include <utility>

namespace orbel::qt {

std::unique_ptr<OpenContextMenu> QtContextMenus::popUp(std::vector<MenuEntry> entries,
                                                       ContextMenuDelegate* delegate, const Surface& surface,
                                                       Point place) {
  const Point origin = surface.frame().origin;
  const QPoint position = ScreenSpace::toQt(Point{origin.x + place.x, origin.y + place.y});
  return std::make_unique<PoppedUpMenu>(std::move(entries), delegate, m_popUps, position);
}

} // namespace orbel::qt
