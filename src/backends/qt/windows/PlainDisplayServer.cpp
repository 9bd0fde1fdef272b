#include "backends/qt/windows/PlainDisplayServer.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace orbel::qt {

namespace {
class NoPicture final : public common::ScreenPicture {
public:
  bool capture(const common::DeviceRect&) override { return false; }
  void patchFrom(const common::ScreenPicture&) override {}
  void release() override {}
  const common::DeviceRect& rect() const override { return m_rect; }
  const std::uint32_t* pixels() const override { return nullptr; }
  std::uint32_t* pixels() override { return nullptr; }

private:
  common::DeviceRect m_rect;
};

// Without it a surface reports the exit that Qt reports.
class NoPointerWatch final : public common::PointerWatch {
public:
  bool waitUntilOutside(const common::DeviceRect&, std::function<void()>) override { return false; }
  void stop() override {}
};

class NoEscapeKey final : public common::EscapeKey {
public:
  void setEnabled(bool) override {}
};
} // namespace

std::unique_ptr<common::ScreenPicture> PlainDisplayServer::makeScreenPicture(PictureMemory) {
  return std::make_unique<NoPicture>();
}

std::optional<QPoint> PlainDisplayServer::pointerLocation() const {
  // As Qt's platforms keep it: the origin of a screen in device pixels, what lies on it in points.
  const QPoint place = QCursor::pos();
  const QScreen* screen = QGuiApplication::screenAt(place);
  if (!screen) return place;
  const QPoint origin = screen->geometry().topLeft();
  return origin + (place - origin) * screen->devicePixelRatio();
}

std::unique_ptr<common::PointerWatch> PlainDisplayServer::makePointerWatch() {
  return std::make_unique<NoPointerWatch>();
}

std::unique_ptr<common::EscapeKey> PlainDisplayServer::makeEscapeKey(std::function<void()>) {
  return std::make_unique<NoEscapeKey>();
}

} // namespace orbel::qt
