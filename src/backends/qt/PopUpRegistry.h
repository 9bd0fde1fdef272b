// Knows the program's pop-ups (context menus, prompts, the open panel, bubbles), so that a surface can tell
// whether the pointer is over one of them. Pop-ups enter themselves; surfaces ask. Positions are Qt's:
// device-independent pixels of the screen, y down. Main thread only.
#pragma once

#include "foundation/Registration.h"

#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

namespace orbel {

class PopUpRegistry {
public:
  // Counts the window and everything that hangs on it (submenus, lists of combo boxes) whenever it is
  // visible, until the registration goes. The window is borrowed and may go first.
  Registration add(QWidget& popUp);

  // Asked of the display now.
  bool isPointerOver() const;
  bool contains(QPoint position) const;

private:
  using PopUps = std::vector<QPointer<QWidget>>;
  bool belongsToPopUp(const QWidget* window) const;

  std::shared_ptr<PopUps> m_popUps = std::make_shared<PopUps>();
};

} // namespace orbel
