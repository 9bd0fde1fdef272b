// The X server as Qt's windows use it. Requests about a window are sent over Qt's own connection, so that
// they follow its creation in order; questions and event selections use the backend's connection.
#pragma once

#include "backends/qt/windows/DisplayServer.h"
#include "backends/x11/BlurRegion.h"
#include "backends/x11/CompositorWatch.h"
#include "backends/x11/DesktopSettings.h"
#include "backends/x11/SharedPixels.h"
#include "backends/x11/WindowShape.h"
#include "backends/x11/WindowStack.h"
#include "foundation/Observers.h"

#include <memory>

namespace orbel::x11 {
class Connection;
class PassiveKeyGrabs;
class RawPointer;
} // namespace orbel::x11

namespace orbel::qtx11 {

// What the desktop has made of the X11 backend; all of it outlives the display server.
struct X11Parts {
  x11::Connection& connection;
  x11::RawPointer& pointer;
  x11::PassiveKeyGrabs& keyGrabs;
};

class X11DisplayServer final : public qt::DisplayServer {
public:
  // Qt's own connection. Null, and logged, on any other platform of Qt than "xcb". Needs a QGuiApplication.
  static xcb_connection_t* windowConnection();

  X11DisplayServer(const X11Parts& parts, xcb_connection_t* windowConnection);

  bool isCompositing() const override { return m_compositor.isCompositing(); }
  Registration observeCompositing(std::function<void()> block) override;
  bool offersLiveBlur() const override { return m_compositor.isCompositing() && m_blur.isOffered(); }
  bool offersScreenPictures() const override { return true; }
  std::unique_ptr<common::ScreenPicture> makeScreenPicture(PictureMemory memory) override;
  common::DeviceRect wholeScreen() const override;

  void setGeometry(WId window, const common::DeviceRect& rect) override;
  void disableShadow(WId window) override;
  void setInputShape(WId window, const DeviceRects& rects) override;
  void setOutline(WId window, const std::optional<DeviceRects>& rects) override;
  void setBlur(WId window, const DeviceRects& rects) override;
  void flush() override;

  bool isOrderHonoured() const override { return m_stack.isHonoured(); }
  void raise(WId window) override;
  void placeBelow(WId window, WId other) override;
  std::optional<WId> topLevel(WId window) const override;

  std::optional<QPoint> pointerLocation() const override;
  std::unique_ptr<common::PointerWatch> makePointerWatch() override;
  std::unique_ptr<common::EscapeKey> makeEscapeKey(std::function<void()> pressed) override;
  bool isDragUnderWay() const override;

  std::optional<std::int32_t> integerSetting(std::string_view name) const override;
  std::optional<std::string> textSetting(std::string_view name) const override;

private:
  X11Parts m_parts;
  xcb_connection_t* m_windowConnection;
  x11::BlurRegion m_blur;
  x11::WindowShape m_shape;
  x11::WindowStack m_stack;
  x11::SharedPixelsStore m_sharedPixels;
  x11::DesktopSettings m_settings;
  Observers<> m_compositingObservers;
  x11::CompositorWatch m_compositor;
};

} // namespace orbel::qtx11
