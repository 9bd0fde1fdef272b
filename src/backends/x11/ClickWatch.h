// Whether the user has pressed a button somewhere else than on our own windows since a mark: giving the focus
// back to an earlier window would then take it from where the user has just put it. Presses are listened to
// from a mark to the first such press and not at other times.
#pragma once

#include "backends/x11/ClientList.h"
#include "foundation/Registration.h"

#include <optional>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;
class RawPointer;

class ClickWatch {
public:
  // `connection` is asked about windows; it may be any.
  ClickWatch(Connection& connection, RawPointer& pointer);

  // The server's time now, in milliseconds; the watch starts.
  xcb_timestamp_t mark();
  bool hasClickedElsewhereSince(xcb_timestamp_t mark);

private:
  void pressed(xcb_timestamp_t time);
  bool isPointerOverOwnWindow() const;

  Connection& m_connection;
  RawPointer& m_pointer;
  ClientList m_clients;
  std::optional<xcb_timestamp_t> m_lastClickElsewhere;
  Registration m_presses; // empty while nothing is watched
};

} // namespace orbel::x11
