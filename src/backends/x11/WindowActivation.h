// Brings a window to the front and gives it the keyboard, under any window manager and under none.
#pragma once

#include <xcb/xcb.h>

namespace orbel::x11 {

class ClientList;
class Connection;

class WindowActivation {
public:
  WindowActivation(Connection& connection, const ClientList& clients);

  // As the user's own act, now: shows the window's desktop and opens it when it is minimized. False when
  // there is no such window.
  bool activate(xcb_window_t window);
  // Whether the window is on the desktop that is shown, or on all, or there are no desktops.
  bool isOnShownDesktop(xcb_window_t window) const;

private:
  void askWindowManager(xcb_window_t window);
  void focusDirectly(xcb_window_t window);

  Connection& m_connection;
  const ClientList& m_clients;
};

} // namespace orbel::x11
