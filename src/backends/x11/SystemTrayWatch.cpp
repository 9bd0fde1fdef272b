#include "backends/x11/SystemTrayWatch.h"

#include "backends/x11/Connection.h"
#include "backends/x11/ScreenSelection.h"
#include "foundation/Log.h"

#include <xcb/xfixes.h>

namespace orbel {

SystemTrayWatch::SystemTrayWatch(Connection& connection)
    : m_connection(connection), m_selection(ScreenSelection::atom(connection, "_NET_SYSTEM_TRAY_S")),
      m_colors(connection.atom("_NET_SYSTEM_TRAY_COLORS")) {
  const auto* extension = xcb_get_extension_data(connection.xcb(), &xcb_xfixes_id);
  if (extension && extension->present) {
    // The server refuses the extension's requests to who has not told his version.
    ownReply(xcb_xfixes_query_version_reply(connection.xcb(),
                                            xcb_xfixes_query_version(connection.xcb(), 1, 0), nullptr));
    m_selectionNotify = static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    xcb_xfixes_select_selection_input(connection.xcb(), connection.root(), m_selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  } else {
    Log::warning("the X server does not tell when a system tray comes or goes");
  }
  m_events = connection.observeEvents([this](const xcb_generic_event_t& event) { handleEvent(event); });
  // Asked after selecting, so that no change falls between.
  setTray(ScreenSelection::owner(connection, m_selection));
}

std::optional<SystemTrayWatch::Color> SystemTrayWatch::foreground() {
  if (m_tray == XCB_NONE) return std::nullopt;
  constexpr std::uint32_t kNumbers = 3; // of the normal colour; those of errors and warnings follow
  const auto colors = ownReply(xcb_get_property_reply(
      m_connection.xcb(),
      xcb_get_property(m_connection.xcb(), 0, m_tray, m_colors, XCB_ATOM_CARDINAL, 0, kNumbers), nullptr));
  if (!colors || colors->format != 32 || colors->value_len < kNumbers) return std::nullopt;
  const auto* numbers = static_cast<const std::uint32_t*>(xcb_get_property_value(colors.get()));
  return Color{static_cast<std::uint16_t>(numbers[0]), static_cast<std::uint16_t>(numbers[1]),
               static_cast<std::uint16_t>(numbers[2])};
}

void SystemTrayWatch::handleEvent(const xcb_generic_event_t& event) {
  const auto type = event.response_type & 0x7F;
  if (m_selectionNotify != 0 && type == m_selectionNotify) {
    const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (notify.selection != m_selection || notify.owner == m_tray) return;
    setTray(notify.owner);
    m_observers.notify();
  } else if (type == XCB_PROPERTY_NOTIFY) {
    const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (m_tray != XCB_NONE && changed.window == m_tray && changed.atom == m_colors) m_observers.notify();
  }
}

void SystemTrayWatch::setTray(xcb_window_t tray) {
  m_tray = tray;
  if (tray == XCB_NONE) return;
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(m_connection.xcb(), tray, XCB_CW_EVENT_MASK, &mask);
  m_connection.flush();
}

} // namespace orbel
