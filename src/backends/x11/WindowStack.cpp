#include "backends/x11/WindowStack.h"

#include "backends/x11/Connection.h"
#include "backends/x11/PropertyRequest.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace orbel::x11 {

namespace {
// Beginnings of the names by which those managers introduce themselves.
constexpr std::array<std::string_view, 5> kOwnOrder{"KWin", "GNOME Shell", "Mutter", "Budgie", "Gala"};
} // namespace

bool WindowStack::isHonoured() const {
  const auto manager =
      PropertyRequest(m_connection, m_connection.root(), "_NET_SUPPORTING_WM_CHECK").number();
  if (!manager) return true;
  const std::string name = PropertyRequest(m_connection, *manager, "_NET_WM_NAME").text();
  return std::none_of(kOwnOrder.begin(), kOwnOrder.end(),
                      [&](std::string_view beginning) { return name.starts_with(beginning); });
}

void WindowStack::raise(xcb_window_t window) {
  const std::uint32_t mode = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(m_windowConnection, window, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
}

void WindowStack::placeBelow(xcb_window_t window, xcb_window_t sibling) {
  const std::array<std::uint32_t, 2> values{sibling, XCB_STACK_MODE_BELOW};
  xcb_configure_window(m_windowConnection, window, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                       values.data());
}

std::optional<xcb_window_t> WindowStack::topLevel(xcb_window_t window) const {
  while (true) {
    const auto tree = ownReply(
        xcb_query_tree_reply(m_windowConnection, xcb_query_tree(m_windowConnection, window), nullptr));
    if (!tree || tree->parent == XCB_NONE) return std::nullopt;
    if (tree->parent == m_connection.root()) return window;
    window = tree->parent;
  }
}

} // namespace orbel::x11
