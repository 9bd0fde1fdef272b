#include "backends/qt/windows/ScreenSpace.h"

#include <QGuiApplication>
#include <QScreen>
#include <cmath>

namespace orbel::qt {

namespace {
int rounded(double value) {
  return static_cast<int>(std::lround(value));
}

// Qt keeps a screen's origin in device pixels and scales only its size.
common::DeviceRect deviceFrame(const QScreen& screen) {
  const QRect frame = screen.geometry();
  const double scale = ScreenSpace::scaleOf(&screen);
  return {frame.x(), frame.y(), rounded(frame.width() * scale), rounded(frame.height() * scale)};
}

double distance(double value, double low, double high) {
  return value < low ? low - value : value > high ? value - high : 0;
}

// The screen with the smallest distance to a place, given how far a screen is from it.
template <class Distance>
QScreen* nearestScreen(Distance distanceOf) {
  QScreen* nearest = QGuiApplication::primaryScreen();
  if (!nearest) return nullptr;
  double smallest = distanceOf(*nearest);
  for (QScreen* screen : QGuiApplication::screens()) {
    const double candidate = distanceOf(*screen);
    if (candidate < smallest) {
      smallest = candidate;
      nearest = screen;
    }
  }
  return nearest;
}
} // namespace

double ScreenSpace::flip(double y) {
  const QScreen* primary = QGuiApplication::primaryScreen();
  if (!primary) return -y;
  const QRect frame = primary->geometry();
  return frame.y() + frame.height() - y;
}

QScreen* ScreenSpace::screenAt(Point point) {
  const double y = flip(point.y);
  return nearestScreen([&](const QScreen& screen) {
    const QRect frame = screen.geometry();
    return distance(point.x, frame.x(), frame.x() + frame.width()) +
           distance(y, frame.y(), frame.y() + frame.height());
  });
}

double ScreenSpace::scaleOf(const QScreen* screen) {
  return screen ? screen->devicePixelRatio() : 1;
}

Rect ScreenSpace::frameOf(const QScreen* screen) {
  if (!screen) return {};
  const QRect frame = screen->geometry();
  return {static_cast<double>(frame.x()), flip(frame.y() + frame.height()),
          static_cast<double>(frame.width()), static_cast<double>(frame.height())};
}

common::DeviceRect ScreenSpace::toDevice(const Rect& rect) {
  const QScreen* screen = screenAt(rect.center());
  const double scale = scaleOf(screen);
  const QPoint origin = screen ? screen->geometry().topLeft() : QPoint();
  return {rounded(origin.x() + (rect.minX() - origin.x()) * scale),
          rounded(origin.y() + (flip(rect.maxY()) - origin.y()) * scale), rounded(rect.size.width * scale),
          rounded(rect.size.height * scale)};
}

Point ScreenSpace::toPoints(int deviceX, int deviceY) {
  const QScreen* screen = nearestScreen([&](const QScreen& candidate) {
    const common::DeviceRect frame = deviceFrame(candidate);
    return distance(deviceX, frame.x, frame.right() - 1) + distance(deviceY, frame.y, frame.bottom() - 1);
  });
  const double scale = scaleOf(screen);
  const QPoint origin = screen ? screen->geometry().topLeft() : QPoint();
  return {origin.x() + (deviceX - origin.x()) / scale, flip(origin.y() + (deviceY - origin.y()) / scale)};
}

QRect ScreenSpace::toQt(const Rect& rect) {
  return {rounded(rect.minX()), rounded(flip(rect.maxY())), rounded(rect.size.width),
          rounded(rect.size.height)};
}

QPoint ScreenSpace::toQt(Point point) {
  return {rounded(point.x), rounded(flip(point.y))};
}

Rect ScreenSpace::fromQt(const QRect& rect) {
  return {static_cast<double>(rect.x()), flip(rect.y() + rect.height()), static_cast<double>(rect.width()),
          static_cast<double>(rect.height())};
}

} // namespace orbel::qt
