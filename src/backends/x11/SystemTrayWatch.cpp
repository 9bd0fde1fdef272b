#include "backends/x11/SystemTrayWatch.h"

#include "backends/x11/Connection.h"
#include "backends/x11/XcbEvent.h"

#include <cstdint>

namespace orbel::x11 {

SystemTrayWatch::SystemTrayWatch(Connection& connection)
    : m_connection(connection), m_tray(connection, "_NET_SYSTEM_TRAY_S", "a system tray",
                                       [this] {
                                         listenToTray();
                                         m_observers.notify();
                                       }),
      m_colors(connection.atom("_NET_SYSTEM_TRAY_COLORS")),
      m_events(connection.observeEvents([this](const xcb_generic_event_t& event) { handleEvent(event); })) {
  listenToTray();
}

std::optional<SystemTrayWatch::Color> SystemTrayWatch::foreground() {
  if (tray() == XCB_NONE) return std::nullopt;
  constexpr std::uint32_t kNumbers = 3; // of the normal colour; those of errors and warnings follow
  const auto colors = ownReply(xcb_get_property_reply(
      m_connection.xcb(),
      xcb_get_property(m_connection.xcb(), 0, tray(), m_colors, XCB_ATOM_CARDINAL, 0, kNumbers), nullptr));
  if (!colors || colors->format != 32 || colors->value_len < kNumbers) return std::nullopt;
  const auto* numbers = static_cast<const std::uint32_t*>(xcb_get_property_value(colors.get()));
  return Color{static_cast<std::uint16_t>(numbers[0]), static_cast<std::uint16_t>(numbers[1]),
               static_cast<std::uint16_t>(numbers[2])};
}

void SystemTrayWatch::handleEvent(const xcb_generic_event_t& event) {
  if (eventType(event) != XCB_PROPERTY_NOTIFY) return;
  const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  if (tray() != XCB_NONE && changed.window == tray() && changed.atom == m_colors) m_observers.notify();
}

void SystemTrayWatch::listenToTray() {
  if (tray() == XCB_NONE) return;
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(m_connection.xcb(), tray(), XCB_CW_EVENT_MASK, &mask);
  m_connection.flush();
}

} // namespace orbel::x11
