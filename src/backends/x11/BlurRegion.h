// Asks the window manager to blur what lies behind a part of a window, live (the KDE blur region).
// Device pixels of the window, y down. Requests are sent on the window's connection and are not flushed.
#pragma once

#include "backends/common/DeviceRect.h"

#include <vector>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class BlurRegion {
public:
  // The window manager is asked over the one connection, windows are changed over the one that made them.
  // Both outlive the object.
  BlurRegion(Connection& connection, xcb_connection_t* windowConnection);

  // Whether the window manager says that it blurs; asked of the server now, because the effect can
  // be switched.
  bool isOffered() const;
  void set(xcb_window_t window, const std::vector<common::DeviceRect>& rectangles);
  void clear(xcb_window_t window);

private:
  Connection& m_connection;
  xcb_connection_t* m_windowConnection;
};

} // namespace orbel::x11
