// What lies behind every window of the test screen: a diagonal gradient, so that each place has a colour of
// its own and a picture shows whether something is transparent, frosted or displaced.
#pragma once

#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/ScreenGeometry.h"

namespace orbel::test {

class Wallpaper {
public:
  // Sets it on the root window with the properties that compositors read. The picture lasts as long as
  // the connection.
  explicit Wallpaper(DisplayConnection& display);

  // KWin paints no root window: there the wallpaper is a window of the desktop's kind, below all others.
  void showAsDesktopWindow();
  xcb_window_t desktopWindow() const { return m_desktopWindow; }

  static Rgb colorAt(ScreenPoint point);

private:
  void paint();

  DisplayConnection& m_display;
  xcb_pixmap_t m_pixmap = XCB_NONE;
  xcb_window_t m_desktopWindow = XCB_NONE;
};

} // namespace orbel::test
