// The icon that a window brings itself.
#pragma once

#include "scene/Bitmap.h"

#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class WindowIcon {
public:
  // The smallest that is at least `pixelSize` in both directions, else the largest; empty when there is none
  // that is whole.
  static Bitmap read(Connection& connection, xcb_window_t window, int pixelSize);
};

} // namespace orbel::x11
