#include "backends/x11/WindowActivation.h"

#include "backends/x11/ClientList.h"
#include "backends/x11/ClientMessage.h"
#include "backends/x11/Connection.h"
#include "backends/x11/PropertyRequest.h"

#include <algorithm>

namespace orbel::x11 {

namespace {

// A pager acts for the user: window managers obey it. A program that speaks for itself would only be marked
// as wanting attention when another has raised itself meanwhile.
constexpr std::uint32_t kPagerSource = 2;

constexpr std::uint32_t kAllDesktops = 0xFFFFFFFF;

constexpr std::uint32_t kInputHintFlag = 1; // in the first item of WM_HINTS; the second is the hint

bool takesFocus(Connection& connection, xcb_window_t window) {
  PropertyRequest hints(connection, window, "WM_HINTS");
  const auto items = hints.numbers();
  return items.size() < 2 || (items[0] & kInputHintFlag) == 0 || items[1] != 0;
}

bool wantsToBeTold(Connection& connection, xcb_window_t window) {
  PropertyRequest protocols(connection, window, "WM_PROTOCOLS");
  const auto atoms = protocols.numbers();
  return std::ranges::find(atoms, connection.atom("WM_TAKE_FOCUS")) != atoms.end();
}

} // namespace

WindowActivation::WindowActivation(Connection& connection, const ClientList& clients)
    : m_connection(connection), m_clients(clients) {}

bool WindowActivation::activate(xcb_window_t window) {
  const auto attributes = ownReply(xcb_get_window_attributes_reply(
      m_connection.xcb(), xcb_get_window_attributes(m_connection.xcb(), window), nullptr));
  if (!attributes) return false;
  if (m_clients.windowManager() == XCB_NONE) {
    focusDirectly(window);
    return true;
  }
  const auto managed = m_clients.windows();
  if (std::ranges::find(managed, window) == managed.end()) return false;
  askWindowManager(window);
  return true;
}

bool WindowActivation::isOnShownDesktop(xcb_window_t window) const {
  PropertyRequest own(m_connection, window, "_NET_WM_DESKTOP");
  PropertyRequest shown(m_connection, m_connection.root(), "_NET_CURRENT_DESKTOP");
  const auto desktop = own.number();
  return !desktop || *desktop == kAllDesktops || !shown.number() || desktop == shown.number();
}

void WindowActivation::askWindowManager(xcb_window_t window) {
  const xcb_timestamp_t now = m_connection.serverTime();
  // Some window managers are set to activate a window without switching to its desktop.
  if (!isOnShownDesktop(window)) {
    const std::uint32_t desktop =
        PropertyRequest(m_connection, window, "_NET_WM_DESKTOP").number().value_or(0);
    ClientMessage::sendToManager(m_connection, m_connection.root(), "_NET_CURRENT_DESKTOP",
                                 {desktop, now, 0, 0, 0});
  }
  // An older time, the summon's say, would be refused by the server when the focus has moved since.
  ClientMessage::sendToManager(m_connection, window, "_NET_ACTIVE_WINDOW",
                               {kPagerSource, now, XCB_NONE, 0, 0});
}

void WindowActivation::focusDirectly(xcb_window_t window) {
  xcb_connection_t* xcb = m_connection.xcb();
  const xcb_timestamp_t now = m_connection.serverTime();
  xcb_map_window(xcb, window);
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(xcb, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
  if (takesFocus(m_connection, window)) xcb_set_input_focus(xcb, XCB_INPUT_FOCUS_PARENT, window, now);
  if (wantsToBeTold(m_connection, window))
    ClientMessage::sendToProgram(m_connection, window, "WM_PROTOCOLS",
                                 {m_connection.atom("WM_TAKE_FOCUS"), now, 0, 0, 0});
  m_connection.flush();
}

} // namespace orbel::x11
