// Knows whether the desktop has a system tray of the older kind (XEmbed) and in which colour it wants
// one-coloured icons, which tells dark trays from light ones. Tells when one comes, goes or changes its
// colour. Main thread only; wakes up only for such a change. Used by the status item.
#pragma once

#include "foundation/Observers.h"
#include "foundation/Registration.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <xcb/xcb.h>

namespace orbel {

class Connection;

class SystemTrayWatch {
public:
  struct Color {
    std::uint16_t red = 0, green = 0, blue = 0; // full is 65535
    friend bool operator==(const Color&, const Color&) = default;
  };

  // The connection outlives the watch.
  explicit SystemTrayWatch(Connection& connection);

  Connection& connection() const { return m_connection; }
  // The tray's window, which tells one tray from the next; XCB_NONE while there is none.
  xcb_window_t tray() const { return m_tray; }
  // Asked of the server now. Nothing when there is no tray or it does not say.
  std::optional<Color> foreground();
  Registration observeChanges(std::function<void()> block) { return m_observers.add(std::move(block)); }

private:
  void handleEvent(const xcb_generic_event_t& event);
  void setTray(xcb_window_t tray);

  Connection& m_connection;
  Observers<> m_observers;
  xcb_atom_t m_selection = XCB_ATOM_NONE;
  xcb_atom_t m_colors = XCB_ATOM_NONE;
  xcb_window_t m_tray = XCB_NONE;
  std::uint8_t m_selectionNotify = 0; // the server's number of the event; 0 where it lacks the extension
  Registration m_events;
};

} // namespace orbel
