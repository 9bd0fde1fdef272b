// The native window behind a menu surface: override-redirect, translucent, made ahead of time and used again,
// since making one costs more than showing it. Sends what happens to it to its surface; holds nothing of the
// menu itself.
#pragma once

#include "scene/Event.h"

#include <QBackingStore>
#include <QPointF>
#include <QRect>
#include <QWindow>

class QDropEvent;
class QPainter;

namespace orbel::qt {

// The surface that uses the window. A call may end the surface and hand the window to another one.
class MenuWindowOwner {
public:
  virtual ~MenuWindowOwner() = default;
  // Damage in device pixels, y down; the painter addresses device pixels and is clipped to it.
  virtual void paintWindow(QPainter& painter, const QRect& damage) = 0;
  // With the buttons that are down, as far as Qt knows.
  virtual void windowPointerMoved(QPointF position, Qt::KeyboardModifiers modifiers,
                                  Qt::MouseButtons held) = 0;
  virtual void windowPointerLeft() = 0;
  virtual void windowPressed(PointerButton button, QPointF position, Qt::KeyboardModifiers modifiers) = 0;
  virtual void windowReleased(PointerButton button, QPointF position, Qt::KeyboardModifiers modifiers) = 0;
  // Enter, move and drop; the owner accepts or ignores the event.
  virtual void windowDragged(QDropEvent& event) = 0;
  virtual void windowDragLeft() = 0;
};

class MenuWindow : public QWindow {
public:
  MenuWindow();
  ~MenuWindow() override;

  void setOwner(MenuWindowOwner* owner) { m_owner = owner; }

  // Repaints the rectangle (device pixels, y down) in the next turn of the loop, together with others.
  void addDamage(const QRect& rect);
  // Repaints what is damaged now. Also before the server has said that the window is visible: the first
  // picture arrives together with the window.
  void paintNow();
  QSize deviceSize() const;

protected:
  bool event(QEvent* event) override;

private:
  bool deliver(QEvent& event);

  MenuWindowOwner* m_owner = nullptr;
  QBackingStore m_backingStore;
  QRect m_damage;
  bool m_paintPosted = false;
};

} // namespace orbel::qt
