#include "backends/x11/X11TopLevelWindows.h"

#include "backends/x11/Connection.h"
#include "backends/x11/WindowIcon.h"
#include "backends/x11/WindowIdentity.h"
#include "backends/x11/WindowRegistry.h"
#include "backends/x11/XcbEvent.h"

#include <array>
#include <cctype>
#include <unistd.h>
#include <utility>

namespace orbel::x11 {

X11TopLevelWindows::X11TopLevelWindows(Connection& connection, ClickWatch& clicks)
    : m_connection(connection), m_clients(connection), m_active(connection, m_clients),
      m_activation(connection, m_clients), m_registry(std::make_unique<WindowRegistry>(connection)),
      m_restoration(clicks, m_clients, m_active, m_activation, *m_registry),
      m_refresh([this] { refresh(); }) {
  WindowIdentity::internAtoms(connection);
  m_events = connection.observeEvents([this](const xcb_generic_event_t& event) { handleEvent(event); });
  connection.selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE);
  followWindowManager();
  m_registry->update(m_clients.windows());
}

X11TopLevelWindows::~X11TopLevelWindows() = default;

std::vector<common::TopLevelWindow> X11TopLevelWindows::windows() const {
  return m_registry->windows();
}

Registration X11TopLevelWindows::observeChanges(std::function<void()> block) {
  return m_observers.add(std::move(block));
}

std::optional<std::uint64_t> X11TopLevelWindows::activeWindow() const {
  return m_active.window();
}

bool X11TopLevelWindows::activate(std::uint64_t window) {
  m_restoration.forget();
  return m_activation.activate(static_cast<xcb_window_t>(window));
}

bool X11TopLevelWindows::restore(std::uint64_t window, std::uint64_t summon) {
  return m_restoration.restore(static_cast<xcb_window_t>(window), static_cast<xcb_timestamp_t>(summon));
}

std::uint64_t X11TopLevelWindows::summonMark() {
  return m_restoration.mark();
}

Bitmap X11TopLevelWindows::icon(std::uint64_t window, int pixelSize) const {
  return WindowIcon::read(m_connection, static_cast<xcb_window_t>(window), pixelSize);
}

std::string X11TopLevelWindows::makeStartupId(const std::string& entryName) {
  std::string name;
  for (const char character : entryName) {
    const bool isPlain =
        std::isalnum(static_cast<unsigned char>(character)) || character == '.' || character == '-';
    name += isPlain ? character : '_';
  }
  std::array<char, 256> host{};
  gethostname(host.data(), host.size() - 1);
  return name + "-" + std::to_string(getpid()) + "-" + host.data() + "-" + std::to_string(m_startupCount++) +
         "_TIME" + std::to_string(m_connection.serverTime());
}

void X11TopLevelWindows::handleEvent(const xcb_generic_event_t& event) {
  switch (eventType(event)) {
  case XCB_PROPERTY_NOTIFY:
    handleProperty(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    return;
  case XCB_DESTROY_NOTIFY:
    if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == m_windowManager)
      followWindowManager();
    m_refresh.schedule();
    return;
  // These come only while there is no window manager.
  case XCB_MAP_NOTIFY:
  case XCB_UNMAP_NOTIFY:
  case XCB_REPARENT_NOTIFY:
    m_refresh.schedule();
    return;
  default:
    return;
  }
}

void X11TopLevelWindows::handleProperty(const xcb_property_notify_event_t& notification) {
  if (notification.window == m_connection.root()) {
    if (notification.atom == m_connection.atom("_NET_SUPPORTING_WM_CHECK")) {
      followWindowManager();
      m_refresh.schedule();
    } else if (notification.atom == m_connection.atom("_NET_CLIENT_LIST")) {
      m_refresh.schedule();
    }
    return;
  }
  if (notification.window == m_windowManager) {
    // A starting window manager names its window before the window says the same.
    if (notification.atom == m_connection.atom("_NET_SUPPORTING_WM_CHECK")) {
      followWindowManager();
      m_refresh.schedule();
    }
    return;
  }
  if (m_registry->propertyChanged(notification.window, notification.atom)) m_refresh.schedule();
}

void X11TopLevelWindows::followWindowManager() {
  const xcb_window_t named = m_clients.namedWindowManager();
  if (named != XCB_NONE) {
    // Its end changes no property. Selected before it is looked at, so that it cannot end unseen.
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection.xcb(), named, XCB_CW_EVENT_MASK, &mask);
  }
  m_windowManager = named;
  // Every menu and tooltip of every program causes events on the root window: only where no list is kept
  // for us.
  if (m_clients.windowManager() == XCB_NONE)
    m_connection.selectOnRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
  else
    m_connection.deselectOnRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
}

void X11TopLevelWindows::refresh() {
  if (m_registry->update(m_clients.windows())) m_observers.notify();
}

} // namespace orbel::x11
