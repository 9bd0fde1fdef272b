#include "backends/x11/PointerWatch.h"

#include "backends/x11/Connection.h"
#include "backends/x11/RawPointer.h"

#include <utility>

namespace orbel::x11 {

bool PointerWatch::waitUntilOutside(const common::DeviceRect& rect, std::function<void()> left) {
  m_rect = rect;
  m_left = std::move(left);
  if (!m_motion) {
    m_motion = m_pointer.observeMotion([this] { pointerMoved(); });
    // A round trip on the other connection: from here on no motion is missed, so asking for the place now and
    // receiving every later motion leave no gap.
    m_pointer.heldButtons();
  }
  if (!isOutside()) return true;
  stop();
  return false;
}

void PointerWatch::stop() {
  m_motion.reset();
  m_left = nullptr;
}

void PointerWatch::pointerMoved() {
  if (!isOutside()) return;
  const auto left = std::move(m_left);
  stop();
  left();
}

bool PointerWatch::isOutside() const {
  const auto reply = ownReply(xcb_query_pointer_reply(
      m_connection.xcb(), xcb_query_pointer(m_connection.xcb(), m_connection.root()), nullptr));
  return !reply || !m_rect.contains(reply->root_x, reply->root_y);
}

} // namespace orbel::x11
