// Which windows are the programs' top-level windows: the window manager's list, or the children of the root
// window where no window manager keeps one. Asks the server at each call and remembers nothing.
#pragma once

#include <vector>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class ClientList {
public:
  explicit ClientList(Connection& connection);

  // The window by which a living window manager of the EWMH standard shows itself; 0 when there is none.
  xcb_window_t windowManager() const;
  // The window that is named as the window manager's, alive or not, ready or not yet; 0 when none is.
  xcb_window_t namedWindowManager() const;
  // In the order in which they were first mapped, where the window manager reports it; else from bottom
  // to top.
  std::vector<xcb_window_t> windows() const;
  // From bottom to top.
  std::vector<xcb_window_t> stackingOrder() const;
  // The program's window inside a frame of the window manager, or the window itself; 0 when there is none.
  xcb_window_t clientWithin(xcb_window_t topLevel) const;

private:
  std::vector<xcb_window_t> listed(const char* property) const;
  std::vector<xcb_window_t> children(xcb_window_t window) const;
  std::vector<xcb_window_t> windowsWithoutManager() const;

  Connection& m_connection;
};

} // namespace orbel::x11
