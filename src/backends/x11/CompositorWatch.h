// Knows whether a compositor draws the screen, and tells when one comes or goes.
// Main thread only; wakes up only for such a change.
#pragma once

#include "foundation/Registration.h"

#include <cstdint>
#include <functional>
#include <xcb/xcb.h>

namespace orbel {

class Connection;

class CompositorWatch {
public:
  // The connection outlives the watch. The block may be empty.
  CompositorWatch(Connection& connection, std::function<void()> changed);

  bool isCompositing() const { return m_owner != XCB_NONE; }

private:
  void handleEvent(const xcb_generic_event_t& event);

  Connection& m_connection;
  std::function<void()> m_changed;
  xcb_atom_t m_selection = XCB_ATOM_NONE;
  xcb_window_t m_owner = XCB_NONE;
  std::uint8_t m_selectionNotify = 0; // the server's number of the event; 0 where it lacks the extension
  Registration m_events;
};

} // namespace orbel
