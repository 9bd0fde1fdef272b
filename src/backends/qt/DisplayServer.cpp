#include "backends/qt/DisplayServer.h"

#include "backends/x11/Connection.h"
#include "backends/x11/ScreenSelection.h"
#include "foundation/Log.h"

#include <QGuiApplication>
#include <array>
#include <utility>

namespace orbel {

namespace {
xcb_window_t number(WId window) {
  return static_cast<xcb_window_t>(window);
}
} // namespace

std::unique_ptr<DisplayServer> DisplayServer::connect(const X11Parts& parts,
                                                      std::function<void()> compositorChanged) {
  // The native interface alone tells nothing: the offscreen platform has one too, without a connection.
  const auto* x11 = QGuiApplication::platformName() == QLatin1String("xcb")
                        ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>()
                        : nullptr;
  if (!x11 || !x11->connection()) {
    Log::warning("the toolkit does not run on X11: menus have no blur and no round input region");
    return nullptr;
  }
  return std::unique_ptr<DisplayServer>(
      new DisplayServer(parts, x11->connection(), std::move(compositorChanged)));
}

DisplayServer::DisplayServer(const X11Parts& parts, xcb_connection_t* windowConnection,
                             std::function<void()> compositorChanged)
    : m_connection(parts.connection), m_pointer(parts.pointer), m_windowConnection(windowConnection),
      m_blur(parts.connection, windowConnection), m_shape(windowConnection),
      m_stack(parts.connection, windowConnection), m_sharedPixels(parts.connection),
      m_settings(parts.connection), m_compositor(parts.connection, std::move(compositorChanged)) {}

bool DisplayServer::isDragUnderWay() const {
  return ScreenSelection::owner(m_connection, m_connection.atom("XdndSelection")) != XCB_NONE;
}

std::optional<QPoint> DisplayServer::pointerLocation() const {
  const auto reply = ownReply(xcb_query_pointer_reply(
      m_connection.xcb(), xcb_query_pointer(m_connection.xcb(), m_connection.root()), nullptr));
  if (!reply || !reply->same_screen) return std::nullopt;
  return QPoint(reply->root_x, reply->root_y);
}

std::unique_ptr<PointerWatch> DisplayServer::makePointerWatch() const {
  return std::make_unique<PointerWatch>(m_connection, m_pointer);
}

void DisplayServer::setGeometry(WId window, const DeviceRect& rect) {
  const std::array<std::uint32_t, 4> values{
      static_cast<std::uint32_t>(rect.x), static_cast<std::uint32_t>(rect.y),
      static_cast<std::uint32_t>(rect.width), static_cast<std::uint32_t>(rect.height)};
  xcb_configure_window(m_windowConnection, number(window),
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       values.data());
}

void DisplayServer::disableShadow(WId window) {
  const std::uint32_t none = 0;
  xcb_change_property(m_windowConnection, XCB_PROP_MODE_REPLACE, number(window),
                      m_connection.atom("_COMPTON_SHADOW"), XCB_ATOM_CARDINAL, 32, 1, &none);
}

void DisplayServer::flush() {
  xcb_flush(m_windowConnection);
}

} // namespace orbel
