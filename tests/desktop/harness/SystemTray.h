// The older system tray (XEmbed): a bar at the top left of the screen that icons are docked into. Destroying
// it is the end of the panel.
#pragma once

#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/ScreenGeometry.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace orbel::test {

class SystemTray {
public:
  static constexpr int kIconSide = 32; // pixels

  // The bar has the colour; with a foreground it asks programs to draw one-coloured icons in it.
  SystemTray(const std::string& display, Rgb background, std::optional<Rgb> foreground);
  ~SystemTray();
  SystemTray(const SystemTray&) = delete;
  SystemTray& operator=(const SystemTray&) = delete;

  void setForeground(Rgb foreground);
  // Where the icons are on the screen. Serves what waits.
  std::vector<ScreenRect> icons();

private:
  void serve();
  void dock(xcb_window_t icon);

  DisplayConnection m_display;
  xcb_window_t m_bar;
  std::vector<xcb_window_t> m_icons;
};

} // namespace orbel::test
