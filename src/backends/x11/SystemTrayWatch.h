// Knows whether the desktop has a system tray of the older kind (XEmbed) and in which colour it wants
// one-coloured icons, which distinguishes dark trays from light ones. Reports when one appears, disappears or
// changes its colour. Main thread only; wakes up only for such a change. Used by the status item.
#pragma once

#include "backends/x11/SelectionOwnerWatch.h"
#include "foundation/Observers.h"
#include "foundation/Registration.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <xcb/xcb.h>

namespace orbel::x11 {

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
  // The tray's window, which distinguishes one tray from the next; XCB_NONE while there is none.
  xcb_window_t tray() const { return m_tray.owner(); }
  // Asked of the server now. Nothing when there is no tray or it does not say.
  std::optional<Color> foreground();
  Registration observeChanges(std::function<void()> block) { return m_observers.add(std::move(block)); }

private:
  void handleEvent(const xcb_generic_event_t& event);
  void listenToTray();

  Connection& m_connection;
  Observers<> m_observers;
  SelectionOwnerWatch m_tray;
  xcb_atom_t m_colors = XCB_ATOM_NONE;
  Registration m_events;
};

} // namespace orbel::x11
