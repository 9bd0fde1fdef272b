#include "backends/x11/WindowStack.h"

#include "backends/x11/XcbReply.h"

#include <array>
#include <cstdint>

namespace orbel {

void WindowStack::raise(xcb_window_t window) {
  const std::uint32_t mode = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
}

void WindowStack::placeBelow(xcb_window_t window, xcb_window_t sibling) {
  const std::array<std::uint32_t, 2> values{sibling, XCB_STACK_MODE_BELOW};
  xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                       values.data());
}

std::optional<xcb_window_t> WindowStack::topLevel(xcb_window_t window) const {
  while (true) {
    const auto tree =
        ownReply(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
    if (!tree || tree->parent == XCB_NONE) return std::nullopt;
    if (tree->parent == m_root) return window;
    window = tree->parent;
  }
}

} // namespace orbel
