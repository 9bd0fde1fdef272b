// Converts between the core's screen points (y up, origin at the bottom-left of the primary screen) and the
// device pixels of the display (y down), each screen with its own number of pixels a point. Asks Qt for the
// screens at every call, since they are plugged in and removed.
#pragma once

#include "backends/common/DeviceRect.h"
#include "foundation/Geometry.h"

#include <QPoint>
#include <QRect>

class QScreen;

namespace orbel::qt {

class ScreenSpace {
public:
  // The screen at a place, or the one nearest to it; null only where there is no screen at all.
  static QScreen* screenAt(Point point);
  static double scaleOf(const QScreen* screen);
  // The screen's frame in screen points.
  static Rect frameOf(const QScreen* screen);

  // A rectangle takes the scale of the screen that its middle is on; its size and its origin are rounded.
  static common::DeviceRect toDevice(const Rect& rect);
  static Point toPoints(int deviceX, int deviceY);
  // Qt's own coordinates: points of each screen, y down, rounded to whole points.
  static QRect toQt(const Rect& rect);
  static QPoint toQt(Point point);
  static Rect fromQt(const QRect& rect);

private:
  static double flip(double y);
};

} // namespace orbel::qt
