// The program's icon in a system tray of the older kind: a small window that the tray takes into its own
// (XEmbed). Made for one tray and destroyed with it. Where the tray offers a visual with transparency the
// picture is drawn in that, else onto what the tray shows behind it. Used by the status item.
#pragma once

#include "foundation/Registration.h"
#include "scene/Bitmap.h"

#include <functional>
#include <string>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class TrayIcon {
public:
  struct Contents {
    std::string title;
    // A square of that many pixels.
    std::function<Bitmap(int side)> picture;
    std::function<void()> clicked; // with the primary or the secondary button
  };

  // `tray` is the window that holds the tray's selection. The connection outlives the icon.
  TrayIcon(Connection& connection, xcb_window_t tray, Contents contents);
  ~TrayIcon();
  TrayIcon(const TrayIcon&) = delete;
  TrayIcon& operator=(const TrayIcon&) = delete;

  // The picture has changed.
  void redraw();

private:
  void makeWindow(xcb_visualid_t visual);
  void describeWindow(const std::string& title);
  void askForPlace();
  void handleEvent(const xcb_generic_event_t& event);
  void drawOver(Bitmap& picture, int x, int y) const;

  Connection& m_connection;
  xcb_window_t m_tray;
  Contents m_contents;
  xcb_window_t m_window = XCB_NONE;
  xcb_colormap_t m_colormap = XCB_NONE;
  xcb_gcontext_t m_graphics = XCB_NONE;
  std::uint8_t m_depth = 0;
  int m_width = 0, m_height = 0; // pixels
  Registration m_events;
};

} // namespace orbel::x11
