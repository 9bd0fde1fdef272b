#include "backends/qt-x11/X11DisplayServer.h"

#include "backends/x11/Connection.h"
#include "backends/x11/EscapeGrab.h"
#include "backends/x11/PointerWatch.h"
#include "backends/x11/RootSnapshot.h"
#include "backends/x11/ScreenSelection.h"
#include "foundation/Log.h"

#include <QGuiApplication>
#include <array>
#include <utility>

namespace orbel::qtx11 {

namespace {
xcb_window_t number(WId window) {
  return static_cast<xcb_window_t>(window);
}

// A picture that is taken once, with the memory that it is read through.
class SinglePicture final : public common::ScreenPicture {
public:
  explicit SinglePicture(x11::Connection& connection)
      : m_memory(connection), m_picture(connection, m_memory) {}

  bool capture(const common::DeviceRect& rect) override { return m_picture.capture(rect); }
  void patchFrom(const common::ScreenPicture& older) override { m_picture.patchFrom(older); }
  void release() override { m_picture.release(); }
  const common::DeviceRect& rect() const override { return m_picture.rect(); }
  const std::uint32_t* pixels() const override { return std::as_const(m_picture).pixels(); }
  std::uint32_t* pixels() override { return m_picture.pixels(); }

private:
  x11::SharedPixelsStore m_memory;
  x11::RootSnapshot m_picture;
};
} // namespace

xcb_connection_t* X11DisplayServer::windowConnection() {
  // The native interface alone proves nothing: the offscreen platform has one too, without a connection.
  const auto* x11 = QGuiApplication::platformName() == QLatin1String("xcb")
                        ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>()
                        : nullptr;
  if (!x11 || !x11->connection()) {
    Log::warning("Qt does not run on X11: menus have no blur and no round input region");
    return nullptr;
  }
  return x11->connection();
}

X11DisplayServer::X11DisplayServer(const X11Parts& parts, xcb_connection_t* windowConnection)
    : m_parts(parts), m_windowConnection(windowConnection), m_blur(parts.connection, windowConnection),
      m_shape(windowConnection), m_stack(parts.connection, windowConnection),
      m_sharedPixels(parts.connection), m_settings(parts.connection),
      m_compositor(parts.connection, [this] { m_compositingObservers.notify(); }) {}

Registration X11DisplayServer::observeCompositing(std::function<void()> block) {
  return m_compositingObservers.add(std::move(block));
}

std::unique_ptr<common::ScreenPicture> X11DisplayServer::makeScreenPicture(PictureMemory memory) {
  if (memory == PictureMemory::single) return std::make_unique<SinglePicture>(m_parts.connection);
  return std::make_unique<x11::RootSnapshot>(m_parts.connection, m_sharedPixels);
}

common::DeviceRect X11DisplayServer::wholeScreen() const {
  const xcb_screen_t& screen = m_parts.connection.screen();
  return {0, 0, screen.width_in_pixels, screen.height_in_pixels};
}

void X11DisplayServer::setGeometry(WId window, const common::DeviceRect& rect) {
  const std::array<std::uint32_t, 4> values{
      static_cast<std::uint32_t>(rect.x), static_cast<std::uint32_t>(rect.y),
      static_cast<std::uint32_t>(rect.width), static_cast<std::uint32_t>(rect.height)};
  xcb_configure_window(m_windowConnection, number(window),
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       values.data());
}

void X11DisplayServer::disableShadow(WId window) {
  const std::uint32_t none = 0;
  xcb_change_property(m_windowConnection, XCB_PROP_MODE_REPLACE, number(window),
                      m_parts.connection.atom("_COMPTON_SHADOW"), XCB_ATOM_CARDINAL, 32, 1, &none);
}

void X11DisplayServer::setInputShape(WId window, const DeviceRects& rects) {
  m_shape.setInput(number(window), rects);
}

void X11DisplayServer::setOutline(WId window, const std::optional<DeviceRects>& rects) {
  if (rects) {
    m_shape.setBounding(number(window), *rects);
  } else {
    m_shape.clearBounding(number(window));
  }
}

void X11DisplayServer::setBlur(WId window, const DeviceRects& rects) {
  if (rects.empty()) {
    m_blur.clear(number(window));
  } else {
    m_blur.set(number(window), rects);
  }
}

void X11DisplayServer::flush() {
  xcb_flush(m_windowConnection);
}

void X11DisplayServer::raise(WId window) {
  m_stack.raise(number(window));
}

void X11DisplayServer::placeBelow(WId window, WId other) {
  m_stack.placeBelow(number(window), number(other));
}

std::optional<WId> X11DisplayServer::topLevel(WId window) const {
  return m_stack.topLevel(number(window));
}

std::optional<QPoint> X11DisplayServer::pointerLocation() const {
  xcb_connection_t* xcb = m_parts.connection.xcb();
  const auto reply =
      x11::ownReply(xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, m_parts.connection.root()), nullptr));
  if (!reply || !reply->same_screen) return std::nullopt;
  return QPoint(reply->root_x, reply->root_y);
}

std::unique_ptr<common::PointerWatch> X11DisplayServer::makePointerWatch() {
  return std::make_unique<x11::PointerWatch>(m_parts.connection, m_parts.pointer);
}

std::unique_ptr<common::EscapeKey> X11DisplayServer::makeEscapeKey(std::function<void()> pressed) {
  return std::make_unique<x11::EscapeGrab>(m_parts.keyGrabs, std::move(pressed));
}

bool X11DisplayServer::isDragUnderWay() const {
  x11::Connection& connection = m_parts.connection;
  return x11::ScreenSelection::owner(connection, connection.atom("XdndSelection")) != XCB_NONE;
}

std::optional<std::int32_t> X11DisplayServer::integerSetting(std::string_view name) const {
  return m_settings.integer(name);
}

std::optional<std::string> X11DisplayServer::textSetting(std::string_view name) const {
  return m_settings.text(name);
}

} // namespace orbel::qtx11
