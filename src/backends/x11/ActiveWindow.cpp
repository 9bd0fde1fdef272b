#include "backends/x11/ActiveWindow.h"

#include "backends/x11/ClientList.h"
#include "backends/x11/Connection.h"
#include "backends/x11/PropertyRequest.h"
#include "backends/x11/XcbEvent.h"

namespace orbel::x11 {

namespace {
// Far longer than a window manager takes from one focus to the next.
constexpr std::chrono::milliseconds kNoneLasts{150};
} // namespace

ActiveWindow::ActiveWindow(Connection& connection, const ClientList& clients)
    : m_connection(connection), m_clients(clients), m_noneLasts([this] { m_last.reset(); }) {
  m_events = connection.observeEvents([this](const xcb_generic_event_t& event) { handleEvent(event); });
  connection.selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE);
  m_last = stated();
}

ActiveWindow::~ActiveWindow() = default;

void ActiveWindow::handleEvent(const xcb_generic_event_t& event) {
  if (eventType(event) != XCB_PROPERTY_NOTIFY) return;
  const auto& notification = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  if (notification.window != m_connection.root() ||
      notification.atom != m_connection.atom("_NET_ACTIVE_WINDOW"))
    return;
  if (const auto window = stated()) {
    m_last = window;
    m_noneLasts.cancel();
  } else {
    m_noneLasts.schedule(kNoneLasts);
  }
}

std::optional<xcb_window_t> ActiveWindow::window() const {
  if (m_clients.windowManager() == XCB_NONE) return focused();
  const auto window = stated();
  const auto candidate = window ? window : m_last;
  // Some window managers continue to name the last window when it no longer exists and no other follows.
  return candidate && exists(*candidate) ? candidate : std::nullopt;
}

bool ActiveWindow::exists(xcb_window_t window) const {
  const auto request = xcb_get_window_attributes(m_connection.xcb(), window);
  return ownReply(xcb_get_window_attributes_reply(m_connection.xcb(), request, nullptr)) != nullptr;
}

std::optional<xcb_window_t> ActiveWindow::stated() const {
  const auto window = PropertyRequest(m_connection, m_connection.root(), "_NET_ACTIVE_WINDOW").number();
  return window == XCB_NONE ? std::nullopt : window;
}

std::optional<xcb_window_t> ActiveWindow::focused() const {
  xcb_connection_t* xcb = m_connection.xcb();
  const auto focus = ownReply(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
  // None and "whatever is under the pointer" are no windows.
  if (!focus || focus->focus == XCB_INPUT_FOCUS_NONE || focus->focus == XCB_INPUT_FOCUS_POINTER_ROOT)
    return std::nullopt;
  // The focus may be on a part of the program's window: climb until just below the root.
  xcb_window_t window = focus->focus;
  while (window != m_connection.root()) {
    const auto tree = ownReply(xcb_query_tree_reply(xcb, xcb_query_tree(xcb, window), nullptr));
    if (!tree) return std::nullopt;
    if (tree->parent == m_connection.root()) {
      const xcb_window_t client = m_clients.clientWithin(window);
      return client == XCB_NONE ? window : client;
    }
    window = tree->parent;
  }
  return std::nullopt;
}

} // namespace orbel::x11
