#include "tests/desktop/harness/SystemTray.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace orbel::test {

namespace {
constexpr int kBarWidth = 400;
constexpr std::uint32_t kDockRequest = 0;

std::uint32_t pixelOf(Rgb color) {
  return std::uint32_t{color.red} << 16 | std::uint32_t{color.green} << 8 | color.blue;
}
} // namespace

SystemTray::SystemTray(const std::string& display, Rgb background, std::optional<Rgb> foreground)
    : m_display(display), m_bar(xcb_generate_id(m_display.get())) {
  xcb_connection_t* connection = m_display.get();
  const std::uint32_t values[] = {pixelOf(background), 1,
                                  XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_bar, m_display.root(), 0, 0, kBarWidth, kIconSide, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
  if (foreground) setForeground(*foreground);
  const std::uint32_t visual = m_display.screen().root_visual;
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_bar, m_display.atom("_NET_SYSTEM_TRAY_VISUAL"),
                      XCB_ATOM_VISUALID, 32, 1, &visual);
  xcb_map_window(connection, m_bar);
  xcb_set_selection_owner(connection, m_bar, m_display.atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
  xcb_client_message_event_t announcement{};
  announcement.response_type = XCB_CLIENT_MESSAGE;
  announcement.format = 32;
  announcement.window = m_display.root();
  announcement.type = m_display.atom("MANAGER");
  announcement.data.data32[0] = XCB_CURRENT_TIME;
  announcement.data.data32[1] = m_display.atom("_NET_SYSTEM_TRAY_S0");
  announcement.data.data32[2] = m_bar;
  xcb_send_event(connection, 0, m_display.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&announcement));
  m_display.roundTrip();
}

void SystemTray::setForeground(Rgb foreground) {
  std::array<std::uint32_t, 12> colors{};
  for (std::size_t index = 0; index < colors.size(); index += 3) {
    colors[index] = foreground.red * 257U;
    colors[index + 1] = foreground.green * 257U;
    colors[index + 2] = foreground.blue * 257U;
  }
  xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, m_bar,
                      m_display.atom("_NET_SYSTEM_TRAY_COLORS"), XCB_ATOM_CARDINAL, 32, colors.size(),
                      colors.data());
  m_display.roundTrip();
}

SystemTray::~SystemTray() {
  // A panel that ends in order gives the icons back first.
  for (const xcb_window_t icon : m_icons) {
    xcb_unmap_window(m_display.get(), icon);
    xcb_reparent_window(m_display.get(), icon, m_display.root(), 0, 0);
  }
  m_display.roundTrip();
}

std::vector<ScreenRect> SystemTray::icons() {
  serve();
  std::vector<ScreenRect> places;
  for (std::size_t index = 0; index < m_icons.size(); ++index)
    places.push_back({static_cast<int>(index) * kIconSide, 0, kIconSide, kIconSide});
  return places;
}

void SystemTray::serve() {
  m_display.roundTrip();
  while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{
      xcb_poll_for_event(m_display.get()), &std::free}) {
    const auto type = event->response_type & 0x7F;
    if (type == XCB_CLIENT_MESSAGE) {
      const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
      if (message.type == m_display.atom("_NET_SYSTEM_TRAY_OPCODE") && message.data.data32[1] == kDockRequest)
        dock(message.data.data32[2]);
    } else if (type == XCB_DESTROY_NOTIFY) {
      std::erase(m_icons, reinterpret_cast<const xcb_destroy_notify_event_t&>(*event).window);
    } else if (type == XCB_REPARENT_NOTIFY) {
      const auto& reparented = reinterpret_cast<const xcb_reparent_notify_event_t&>(*event);
      if (reparented.parent != m_bar) std::erase(m_icons, reparented.window);
    }
  }
}

void SystemTray::dock(xcb_window_t icon) {
  const auto x = static_cast<std::int16_t>(static_cast<int>(m_icons.size()) * kIconSide);
  m_icons.push_back(icon);
  const std::uint32_t size[] = {kIconSide, kIconSide};
  xcb_reparent_window(m_display.get(), icon, m_bar, x, 0);
  xcb_configure_window(m_display.get(), icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
  xcb_map_window(m_display.get(), icon);
  m_display.roundTrip();
}

} // namespace orbel::test
