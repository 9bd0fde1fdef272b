// The window that has the user's keyboard, as the window manager says it. It says "none" for a moment at
// every change of focus: none counts only when it lasts.
#pragma once

#include "backends/x11/DelayedCall.h"
#include "foundation/Registration.h"

#include <optional>
#include <xcb/xcb.h>

namespace orbel::x11 {

class ClientList;
class Connection;

class ActiveWindow {
public:
  ActiveWindow(Connection& connection, const ClientList& clients);
  ~ActiveWindow();

  // Our own windows too. Without a window manager the top-level window that has the input focus.
  std::optional<xcb_window_t> window() const;

private:
  void handleEvent(const xcb_generic_event_t& event);
  std::optional<xcb_window_t> stated() const;
  bool exists(xcb_window_t window) const;
  std::optional<xcb_window_t> focused() const;

  Connection& m_connection;
  const ClientList& m_clients;
  // What holds while the window manager says none and it has not lasted yet
  std::optional<xcb_window_t> m_last;
  DelayedCall m_noneLasts;
  Registration m_events;
};

} // namespace orbel::x11
