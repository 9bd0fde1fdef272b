// Gives windows their round outlines: where they take input, and where they exist at all.
// Device pixels of the window, y down. Requests go out on the given connection and are not flushed.
#pragma once

#include "backends/x11/DeviceRect.h"

#include <cstdint>
#include <vector>
#include <xcb/xcb.h>

namespace orbel {

class WindowShape {
public:
  // The connection outlives the object.
  explicit WindowShape(xcb_connection_t* connection) : m_connection(connection) {}

  // The rows of pixels whose middles lie inside the ellipse that touches a width by height rectangle, inset
  // on all sides; equal rows are joined. What a server knows of round shapes.
  static std::vector<DeviceRect> ellipse(int width, int height, double inset);

  // Input is taken in these rectangles alone; none at all makes the window transparent to input.
  void setInput(xcb_window_t window, const std::vector<DeviceRect>& rectangles);
  // The window exists in these rectangles alone.
  void setBounding(xcb_window_t window, const std::vector<DeviceRect>& rectangles);
  void clearBounding(xcb_window_t window);

private:
  void set(xcb_window_t window, std::uint8_t kind, const std::vector<DeviceRect>& rectangles);

  xcb_connection_t* m_connection;
};

} // namespace orbel
