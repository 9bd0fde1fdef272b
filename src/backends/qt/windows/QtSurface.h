// A menu's window: round, translucent, above everything, never holding the focus.
// Made by QtWindowSystem, which outlives it; the native window is borrowed from there.
#pragma once

#include "backends/common/PointerWatch.h"
#include "backends/qt/canvas/QtCanvas.h"
#include "backends/qt/windows/Backdrop.h"
#include "backends/qt/windows/FileDrag.h"
#include "backends/qt/windows/MenuWindow.h"
#include "foundation/Lifetime.h"
#include "platform/Surface.h"

#include <memory>
#include <optional>

namespace orbel::qt {

class QtWindowSystem;

class QtSurface : public Surface, private MenuWindowOwner {
public:
  QtSurface(QtWindowSystem& system, SurfaceLevel level);
  ~QtSurface() override;
  QtSurface(const QtSurface&) = delete;
  QtSurface& operator=(const QtSurface&) = delete;

  void setDelegate(SurfaceDelegate* delegate) override { m_delegate = delegate; }
  // While shown the window moves at once and takes a backdrop of the new place.
  void setFrame(const Rect& screenFrame) override;
  Rect frame() const override { return m_frame; }
  void show() override;
  void orderOut() override;
  bool isShown() const override { return m_shown; }
  void setAlpha(double alpha) override;
  double alpha() const override { return m_alpha; }
  bool supportsBackdropBlur() const override;
  void setRoundBackdrop(BackdropMaterial material, double inset) override;
  void needsDisplay(const Rect& rect) override;
  std::optional<Point> pointerLocation() const override;
  double backingScale() const override;
  bool pointerIsOverOwnPopUp() const override;

  SurfaceLevel level() const { return m_level; }
  const MenuWindow& window() const { return *m_window; }
  const Backdrop& backdrop() const { return m_backdrop; }
  // The desktop's compositor started or ended.
  void compositorChanged();
  // A dialog that needs the surfaces out of sight opened or closed.
  void dialogChanged() { updateMapping(); }
  // Escape was pressed and this is the topmost surface.
  void cancel();

private:
  void paintWindow(QPainter& painter, const QRect& damage) override;
  void windowPointerMoved(QPointF position, Qt::KeyboardModifiers modifiers, Qt::MouseButtons held) override;
  void windowPointerLeft() override;
  void windowPressed(PointerButton button, QPointF position, Qt::KeyboardModifiers modifiers) override;
  void windowReleased(PointerButton button, QPointF position, Qt::KeyboardModifiers modifiers) override;
  void windowDragged(QDropEvent& event) override;
  void windowDragLeft() override;

  void updateMapping();
  void placeWindow();
  void removeOwnWindows(common::ScreenPicture& screen) const;
  void drawOn(common::ScreenPicture& screen);
  void shapeWindow();
  void repaintAll();
  void reportExit();
  MouseEvent mouseEvent(QPointF position, Qt::KeyboardModifiers modifiers, Qt::MouseButtons held = {}) const;
  Point windowPoint(QPointF position) const;

  QtWindowSystem& m_system;
  SurfaceLevel m_level;
  std::unique_ptr<MenuWindow> m_window;
  SurfaceDelegate* m_delegate = nullptr;
  Rect m_frame;
  common::DeviceRect m_deviceFrame;
  double m_alpha = 1;
  bool m_shown = false;
  bool m_pointerInside = false;                  // reported, and its leaving not yet
  std::optional<PointerButton> m_swallowedPress; // it closed a menu; its release is dropped, too
  Backdrop m_backdrop;
  std::unique_ptr<common::PointerWatch> m_pointerWatch;
  QtCanvas::Scratch m_scratch;
  std::optional<FileDrag> m_drag;
  Lifetime m_lifetime; // watched across calls that may end the surface
};

} // namespace orbel::qt
