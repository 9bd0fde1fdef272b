#include "backends/x11/BlurRegion.h"

#include "backends/x11/Connection.h"
#include "backends/x11/PropertyRequest.h"

namespace orbel::x11 {

namespace {
constexpr const char* kProperty = "_KDE_NET_WM_BLUR_BEHIND_REGION";
}

BlurRegion::BlurRegion(Connection& connection, xcb_connection_t* windowConnection)
    : m_connection(connection), m_windowConnection(windowConnection) {
  m_connection.atom(kProperty);
}

bool BlurRegion::isOffered() const {
  return PropertyRequest(m_connection, m_connection.root(), kProperty).exists();
}

void BlurRegion::set(xcb_window_t window, const std::vector<common::DeviceRect>& rectangles) {
  std::vector<std::uint32_t> numbers;
  numbers.reserve(rectangles.size() * 4);
  for (const common::DeviceRect& rect : rectangles) {
    for (const int number : {rect.x, rect.y, rect.width, rect.height}) {
      numbers.push_back(static_cast<std::uint32_t>(number));
    }
  }
  xcb_change_property(m_windowConnection, XCB_PROP_MODE_REPLACE, window, m_connection.atom(kProperty),
                      XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(numbers.size()), numbers.data());
}

void BlurRegion::clear(xcb_window_t window) {
  xcb_delete_property(m_windowConnection, window, m_connection.atom(kProperty));
}

} // namespace orbel::x11
