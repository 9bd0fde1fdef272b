// Orders windows that no window manager orders for us, and finds where the managed ones stand.
// Requests go out on the given connection and are not flushed.
#pragma once

#include <optional>
#include <xcb/xcb.h>

namespace orbel {

class WindowStack {
public:
  // The connection outlives the object.
  WindowStack(xcb_connection_t* connection, xcb_window_t root) : m_connection(connection), m_root(root) {}

  void raise(xcb_window_t window);
  // Directly below the sibling; both must be children of the root window.
  void placeBelow(xcb_window_t window, xcb_window_t sibling);
  // The child of the root window that holds the window: its frame under a reparenting manager, else itself. None when
  // the window is gone.
  std::optional<xcb_window_t> topLevel(xcb_window_t window) const;

private:
  xcb_connection_t* m_connection;
  xcb_window_t m_root;
};

} // namespace orbel
