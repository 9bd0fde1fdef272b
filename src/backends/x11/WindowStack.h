// Orders windows that no window manager orders for us, and finds where the managed ones stand.
// Requests are sent on the given connection and are not flushed.
#pragma once

#include <optional>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class WindowStack {
public:
  // Questions are sent over the one connection, requests about windows over the one that made them. Both
  // outlive the object.
  WindowStack(Connection& connection, xcb_connection_t* windowConnection)
      : m_connection(connection), m_windowConnection(windowConnection) {}

  // Whether the order counts at all: some window managers draw windows that they do not manage above all
  // others, whatever the server says. Asked of the server now.
  bool isHonoured() const;

  void raise(xcb_window_t window);
  // Directly below the sibling; both must be children of the root window.
  void placeBelow(xcb_window_t window, xcb_window_t sibling);
  // The child of the root window that holds the window: its frame under a reparenting manager, else itself.
  // None when the window no longer exists.
  std::optional<xcb_window_t> topLevel(xcb_window_t window) const;

private:
  Connection& m_connection;
  xcb_connection_t* m_windowConnection;
};

} // namespace orbel::x11
