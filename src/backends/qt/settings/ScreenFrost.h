// The whole screen as it looks behind frosted glass, taken once before a window is shown, so that the window
// can be moved over it without asking for what it covers itself. Kept small: nothing in it is sharp. Device
// pixels, y down.
#pragma once

#include "backends/common/DeviceRect.h"
#include "platform/Surface.h"

#include <QImage>
#include <QPainter>

namespace orbel::qt {

class DisplayServer;

class ScreenFrost {
public:
  // The display outlives the object.
  explicit ScreenFrost(DisplayServer& display) : m_display(display) {}

  // Takes what is on the screen now; the scale is device pixels a point and sets how far the frost blurs.
  void take(double scale);
  void release() { m_picture = {}; }
  bool isEmpty() const { return m_picture.isNull(); }
  // The part of the screen at that place, under the material's tint, fills the target, which is given in the
  // painter's coordinates.
  void paint(QPainter& painter, const QRectF& target, const common::DeviceRect& place,
             BackdropMaterial material) const;

private:
  DisplayServer& m_display;
  QImage m_picture; // kReduction times smaller than the screen
};

} // namespace orbel::qt
