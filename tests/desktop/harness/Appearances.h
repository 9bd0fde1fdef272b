// Where windows that no window manager places (menus, bubbles) have been on the screen, in the order in which
// they were there: also those that were open only between two looks. Needs no polling, since the server
// reports each of them.
#pragma once

#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/ScreenGeometry.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace orbel::test {

class Appearances {
public:
  // Watches from now on. Windows that are there already are known only once they move.
  explicit Appearances(const std::string& displayName);

  // The frame of every window of that side (square, in pixels) when it was mapped, and each later one while
  // it was. Complete up to this call.
  std::vector<ScreenRect> ofSquares(int smallestSide);

private:
  void take(const xcb_generic_event_t& event);

  DisplayConnection m_display;
  std::map<xcb_window_t, ScreenRect> m_frames;
  std::set<xcb_window_t> m_mapped;
  std::vector<ScreenRect> m_places;
};

} // namespace orbel::test
