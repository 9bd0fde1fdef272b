// Who holds one of the selections by which a desktop's services hold an X screen, and when that changes. Main
// thread only; wakes up only for such a change. Used by the watches of the compositor and of the system tray.
#pragma once

#include "foundation/Registration.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class SelectionOwnerWatch {
public:
  // The selection's name is the prefix, such as "_NET_WM_CM_S", and the number of the connection's screen.
  // `service`, such as "a compositor", is for the log, where the server does not report changes. The block is
  // called after another owner is known, also for none. The connection outlives the watch.
  SelectionOwnerWatch(Connection& connection, std::string_view prefix, std::string_view service,
                      std::function<void()> changed);

  // XCB_NONE while it is unowned.
  xcb_window_t owner() const { return m_owner; }

private:
  bool select(Connection& connection);
  void handleEvent(const xcb_generic_event_t& event);

  std::function<void()> m_changed;
  xcb_atom_t m_selection;
  xcb_window_t m_owner = XCB_NONE;
  std::uint8_t m_selectionNotify = 0; // the server's number of the event
  Registration m_events;              // none where the server lacks the extension
};

} // namespace orbel::x11
