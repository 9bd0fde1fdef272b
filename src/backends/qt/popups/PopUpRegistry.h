// Knows the program's pop-ups (context menus, prompts, the open panel, bubbles), so that a surface can
// find out whether the pointer is over one of them. Pop-ups enter themselves; surfaces ask. Positions are
// Qt's: device-independent pixels of the screen, y down. Main thread only; needs a QApplication once a
// pop-up is there.
#pragma once

#include "foundation/Lifetime.h"
#include "foundation/Registration.h"

#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace orbel::qt {

class PopUpRegistry {
public:
  // The block lets the event taps act on what has happened so far. It is called before a pop-up receives a
  // button's release or closes: once it has closed, a click on it would be taken for one elsewhere.
  explicit PopUpRegistry(std::function<void()> drainTaps = {});
  ~PopUpRegistry();
  PopUpRegistry(const PopUpRegistry&) = delete;
  PopUpRegistry& operator=(const PopUpRegistry&) = delete;

  // Counts the window and everything that hangs on it (submenus, lists of combo boxes) whenever it is
  // visible, until the registration is destroyed. The window is borrowed and may be destroyed first.
  Registration add(QWidget& popUp);

  // Asked of the display now.
  bool isPointerOver() const;
  bool contains(QPoint position) const;

private:
  class EventWatch;
  using PopUps = std::vector<QPointer<QWidget>>;
  bool belongsToPopUp(const QWidget* window) const;

  PopUps m_popUps;
  std::function<void()> m_drainTaps;
  std::unique_ptr<EventWatch> m_eventWatch; // from the first pop-up on
  Lifetime m_lifetime;                      // a pop-up may outlive the registry at the end of the program
};

} // namespace orbel::qt
