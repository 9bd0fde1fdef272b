// A connection of our own to the X server, watched by the GLib main loop. Qt's connection selects events for
// itself; what the backend listens to uses connections of its own, so neither replaces the other's selection.
// Failed requests are survived: windows of other programs are destroyed at any time. A broken connection
// means that the desktop has ended; it is logged and reported once. Main thread only; outlives everything
// that uses it.
#pragma once

#include "backends/x11/XcbReply.h"
#include "foundation/Observers.h"
#include "foundation/Registration.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <xcb/xcb.h>

struct _GSource;

namespace orbel::x11 {

class Connection {
public:
  using EventHandler = std::function<void(const xcb_generic_event_t&)>;

  // `displayName` as in DISPLAY, empty for the environment's. `lost` is called once when the connection
  // breaks, from the main loop; without one the process exits with status 1. Empty, and logged, when there is
  // no such display.
  static std::unique_ptr<Connection> open(const std::string& displayName = {},
                                          std::function<void()> lost = {});
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  xcb_connection_t* xcb() const { return m_connection; }
  const xcb_setup_t& setup() const { return *xcb_get_setup(m_connection); }
  const xcb_screen_t& screen() const { return *m_screen; }
  xcb_window_t root() const { return m_screen->root; }

  // Asked of the server once for each name; 0 when the connection is broken.
  xcb_atom_t atom(const std::string& name);
  // Asks for many in one round trip.
  void internAtoms(std::span<const char* const> names);

  // Every event, errors left out, in the order in which the server sent them.
  Registration observeEvents(EventHandler handler);

  // Dispatches what has been received, without waiting.
  void dispatchPending();
  // Dispatches everything that the server generated before this call (one round trip).
  void drain();
  // Shows everything that the server generated before this call and that is not dispatched yet (one round
  // trip). It is dispatched in its turn all the same: for knowing of a change where no handler may run.
  void peek(const EventHandler& visitor);

  // The server's time now, in milliseconds (one round trip). It wraps around after 49.7 days:
  // see isLaterTime.
  xcb_timestamp_t serverTime();
  static bool isLaterTime(xcb_timestamp_t time, xcb_timestamp_t than) {
    return static_cast<std::int32_t>(time - than) > 0;
  }

  void flush() { xcb_flush(m_connection); }

  // Adds to what this connection selects on the root window; several users share the one selection.
  void selectOnRoot(std::uint32_t eventMask);
  void deselectOnRoot(std::uint32_t eventMask);

private:
  class Source;
  Connection(xcb_connection_t* connection, int screenNumber, std::function<void()> lost);

  void awaitServer();
  bool hasReceivedEvent();
  XcbReply<xcb_generic_event_t> nextEvent();
  void dispatch(const xcb_generic_event_t& event);
  void checkForBreak();

  xcb_connection_t* m_connection;
  const xcb_screen_t* m_screen = nullptr;
  std::function<void()> m_lost;
  bool m_isLost = false;
  xcb_window_t m_timeWindow = XCB_NONE; // never mapped; changing a property of it gives the server's time
  std::uint32_t m_rootEventMask = 0;
  std::unordered_map<std::string, xcb_atom_t> m_atoms;
  std::deque<XcbReply<xcb_generic_event_t>> m_received; // taken from xcb and not dispatched yet
  Observers<const xcb_generic_event_t&> m_handlers;
  _GSource* m_source = nullptr;
};

} // namespace orbel::x11
