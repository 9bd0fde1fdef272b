#include "backends/x11/WindowShape.h"

#include <cmath>
#include <xcb/shape.h>

namespace orbel {

std::vector<DeviceRect> WindowShape::ellipse(int width, int height, double inset) {
  std::vector<DeviceRect> rows;
  const double radiusX = width / 2.0 - inset;
  const double radiusY = height / 2.0 - inset;
  if (radiusX <= 0 || radiusY <= 0) return rows;
  for (int y = 0; y < height; ++y) {
    const double dy = (y + 0.5 - height / 2.0) / radiusY;
    if (std::abs(dy) >= 1) continue;
    const double half = radiusX * std::sqrt(1 - dy * dy);
    const int left = static_cast<int>(std::ceil(width / 2.0 - half - 0.5));
    const int right = static_cast<int>(std::floor(width / 2.0 + half - 0.5)) + 1;
    if (right <= left) continue;
    if (!rows.empty() && rows.back().x == left && rows.back().right() == right) {
      ++rows.back().height;
    } else {
      rows.push_back({left, y, right - left, 1});
    }
  }
  return rows;
}

void WindowShape::setInput(xcb_window_t window, const std::vector<DeviceRect>& rectangles) {
  set(window, XCB_SHAPE_SK_INPUT, rectangles);
}

void WindowShape::setBounding(xcb_window_t window, const std::vector<DeviceRect>& rectangles) {
  set(window, XCB_SHAPE_SK_BOUNDING, rectangles);
}

void WindowShape::clearBounding(xcb_window_t window) {
  xcb_shape_mask(m_connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window, 0, 0, XCB_PIXMAP_NONE);
}

void WindowShape::set(xcb_window_t window, std::uint8_t kind, const std::vector<DeviceRect>& rectangles) {
  std::vector<xcb_rectangle_t> wire;
  wire.reserve(rectangles.size());
  for (const DeviceRect& rect : rectangles) {
    wire.push_back({static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
                    static_cast<std::uint16_t>(rect.width), static_cast<std::uint16_t>(rect.height)});
  }
  xcb_shape_rectangles(m_connection, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED, window, 0, 0,
                       static_cast<std::uint32_t>(wire.size()), wire.data());
}

} // namespace orbel
