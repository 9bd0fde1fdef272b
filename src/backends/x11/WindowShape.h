// Gives windows their round outlines: where they take input, and where they exist at all.
// Device pixels of the window, y down. Requests are sent on the given connection and are not flushed.
#pragma once

#include "backends/common/DeviceRect.h"

#include <cstdint>
#include <vector>
#include <xcb/xcb.h>

namespace orbel::x11 {

class WindowShape {
public:
  // The connection outlives the object.
  explicit WindowShape(xcb_connection_t* connection) : m_connection(connection) {}

  // Input is taken in these rectangles alone; none at all makes the window transparent to input.
  void setInput(xcb_window_t window, const std::vector<common::DeviceRect>& rectangles);
  // The window exists in these rectangles alone.
  void setBounding(xcb_window_t window, const std::vector<common::DeviceRect>& rectangles);
  void clearBounding(xcb_window_t window);

private:
  void set(xcb_window_t window, std::uint8_t kind, const std::vector<common::DeviceRect>& rectangles);

  xcb_connection_t* m_connection;
};

} // namespace orbel::x11
