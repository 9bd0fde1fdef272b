#include "backends/x11/WindowShape.h"

#include <xcb/shape.h>

namespace orbel::x11 {

void WindowShape::setInput(xcb_window_t window, const std::vector<common::DeviceRect>& rectangles) {
  set(window, XCB_SHAPE_SK_INPUT, rectangles);
}

void WindowShape::setBounding(xcb_window_t window, const std::vector<common::DeviceRect>& rectangles) {
  set(window, XCB_SHAPE_SK_BOUNDING, rectangles);
}

void WindowShape::clearBounding(xcb_window_t window) {
  xcb_shape_mask(m_connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window, 0, 0, XCB_PIXMAP_NONE);
}

void WindowShape::set(xcb_window_t window, std::uint8_t kind,
                      const std::vector<common::DeviceRect>& rectangles) {
  std::vector<xcb_rectangle_t> wire;
  wire.reserve(rectangles.size());
  for (const common::DeviceRect& rect : rectangles) {
    wire.push_back({static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
                    static_cast<std::uint16_t>(rect.width), static_cast<std::uint16_t>(rect.height)});
  }
  xcb_shape_rectangles(m_connection, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED, window, 0, 0,
                       static_cast<std::uint32_t>(wire.size()), wire.data());
}

} // namespace orbel::x11
