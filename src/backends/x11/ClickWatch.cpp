#include "backends/x11/ClickWatch.h"

#include "backends/x11/ClientProcess.h"
#include "backends/x11/Connection.h"
#include "backends/x11/RawPointer.h"

#include <unistd.h>

namespace orbel::x11 {

ClickWatch::ClickWatch(Connection& connection, RawPointer& pointer)
    : m_connection(connection), m_pointer(pointer), m_clients(connection) {}

xcb_timestamp_t ClickWatch::mark() {
  if (!m_presses)
    m_presses = m_pointer.observePresses([this](std::uint32_t, xcb_timestamp_t time) { pressed(time); });
  return m_pointer.serverTime();
}

bool ClickWatch::hasClickedElsewhereSince(xcb_timestamp_t mark) {
  // A press may be waiting for its turn; asking must not run the handlers of others.
  if (m_presses) m_pointer.peekPresses([this](std::uint32_t, xcb_timestamp_t time) { pressed(time); });
  // A click in the mark's own millisecond is a later one: no user clicks and summons in the same.
  return m_lastClickElsewhere && !Connection::isLaterTime(mark, *m_lastClickElsewhere);
}

void ClickWatch::pressed(xcb_timestamp_t time) {
  if (isPointerOverOwnWindow()) return;
  m_lastClickElsewhere = time;
  m_presses.reset(); // every mark so far is answered
}

// Raw events name no window. The pointer is where it was pressed, or near: the press is milliseconds old.
bool ClickWatch::isPointerOverOwnWindow() const {
  const auto pointer = ownReply(xcb_query_pointer_reply(
      m_connection.xcb(), xcb_query_pointer(m_connection.xcb(), m_connection.root()), nullptr));
  if (!pointer || pointer->child == XCB_NONE) return false;
  const auto isOwn = [this](xcb_window_t window) {
    return window != XCB_NONE && ClientProcess(m_connection, window).identifier() == getpid();
  };
  // A managed window of ours is inside a frame, which is the window manager's.
  return isOwn(pointer->child) || isOwn(m_clients.clientWithin(pointer->child));
}

} // namespace orbel::x11
