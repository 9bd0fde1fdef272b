// One context menu from its opening to its end. The delegate is notified of the end once, before the chosen
// action runs. Once this object is destroyed nothing is called any more, neither the delegate nor an action,
// also when that happens from within a call of the delegate or an action.
#pragma once

#include "backends/qt/popups/PopUpRegistry.h"
#include "platform/ContextMenus.h"

#include <QPoint>

#include <memory>
#include <vector>

namespace orbel::qt {

class PoppedUpMenu final : public OpenContextMenu {
public:
  // Opens at the position, in Qt's screen coordinates. The delegate may be empty.
  PoppedUpMenu(std::vector<MenuEntry> entries, ContextMenuDelegate* delegate, PopUpRegistry& popUps,
               QPoint position);
  ~PoppedUpMenu() override;
  PoppedUpMenu(const PoppedUpMenu&) = delete;
  PoppedUpMenu& operator=(const PoppedUpMenu&) = delete;

  void cancelTracking() override;

private:
  struct Tracking;
  std::shared_ptr<Tracking> m_tracking;
};

} // namespace orbel::qt
