#include "backends/x11/WindowCloser.h"

#include "backends/x11/ClientList.h"
#include "backends/x11/ClientMessage.h"
#include "backends/x11/Connection.h"
#include "backends/x11/WindowIdentity.h"

#include <algorithm>

namespace orbel::x11 {

namespace {

constexpr std::uint32_t kPagerSource = 2;

// A window manager ends the whole program of a window that does not take the request.
bool takesCloseRequest(Connection& connection, xcb_window_t window) {
  PropertyRequest protocols(connection, window, "WM_PROTOCOLS");
  const auto atoms = protocols.numbers();
  return std::ranges::find(atoms, connection.atom("WM_DELETE_WINDOW")) != atoms.end();
}

bool closesWindows(Connection& connection) {
  PropertyRequest supported(connection, connection.root(), "_NET_SUPPORTED");
  const auto atoms = supported.numbers();
  return std::ranges::find(atoms, connection.atom("_NET_CLOSE_WINDOW")) != atoms.end();
}

} // namespace

WindowCloser::WindowCloser(Connection& connection) : m_connection(connection) {}

int WindowCloser::closeWindows(std::int32_t processIdentifier) {
  const ClientList clients(m_connection);
  const bool viaManager = clients.windowManager() != XCB_NONE && closesWindows(m_connection);
  const xcb_timestamp_t now = m_connection.serverTime();
  int asked = 0;
  for (const xcb_window_t window : clients.windows()) {
    if (WindowIdentity(m_connection, window).read().processIdentifier != processIdentifier) continue;
    if (!takesCloseRequest(m_connection, window)) continue;
    ++asked;
    if (viaManager)
      ClientMessage::sendToManager(m_connection, window, "_NET_CLOSE_WINDOW", {now, kPagerSource, 0, 0, 0});
    else
      ClientMessage::sendToProgram(m_connection, window, "WM_PROTOCOLS",
                                   {m_connection.atom("WM_DELETE_WINDOW"), now, 0, 0, 0});
  }
  // The companion ends right after this. A connection that is closed with something unread in it is reset,
  // and what the server has not read by then is lost.
  if (asked > 0) m_connection.drain();
  return asked;
}

} // namespace orbel::x11
