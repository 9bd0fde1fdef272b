// The native side of the settings window: managed, undecorated, its corners rounded, glass behind its
// controls. Paints the glass, lets the frame's delegate paint over it, and reports presses on the background.
// Points, y down, as everywhere in Qt. Owned by QtManagedWindow; the form puts its controls on it.
#pragma once

#include "backends/qt/canvas/QtCanvas.h"
#include "backends/qt/settings/ScreenFrost.h"
#include "platform/ManagedWindow.h"

#include <QPainterPath>
#include <QPixmap>
#include <QWidget>

#include <functional>
#include <optional>

namespace orbel::qt {

class DisplayServer;

class FrostedWindow : public QWidget {
public:
  // The display outlives the window.
  explicit FrostedWindow(DisplayServer& display);
  ~FrostedWindow() override;

  void setDelegate(ManagedWindowDelegate* delegate) { m_delegate = delegate; }
  bool isGlassPossible() const { return m_frost.has_value(); }
  // Both in points.
  void setGlass(BackdropMaterial material, double inset, double cornerRadius);
  void setColorScheme(ColorScheme scheme);
  ColorScheme colorScheme() const { return m_colorScheme; }
  // Draws the background anew.
  void repaintBackground();
  // Whenever the window is no longer visible.
  void setDidHide(std::function<void()> block) { m_didHide = std::move(block); }

protected:
  void paintEvent(QPaintEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

private:
  struct Glass {
    BackdropMaterial material;
    double inset;
    double cornerRadius;
  };
  // Nothing shines through, whatever is painted.
  bool isOpaque() const;
  QPainterPath outline() const;
  void paintGlass(QPainter& painter) const;
  void drawBackground();
  void shapeWindow();
  MouseEvent mouseEvent(const QMouseEvent& event) const;

  DisplayServer& m_display;
  ManagedWindowDelegate* m_delegate = nullptr;
  std::optional<Glass> m_glass;
  std::optional<ScreenFrost> m_frost; // none where the screen cannot be seen; taken while the window is shown
  ColorScheme m_colorScheme = ColorScheme::light;
  QPixmap m_background; // null while it must be drawn
  QtCanvas::Scratch m_scratch;
  bool m_drags = false;
  std::function<void()> m_didHide;
};

} // namespace orbel::qt
