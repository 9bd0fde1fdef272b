// A round shape as display servers know it: rows of whole device pixels, y down. Used for the outlines of menus.
#pragma once

#include "backends/common/DeviceRect.h"

#include <vector>

namespace orbel::common {

struct DeviceEllipse {
  // The rows of pixels whose middles lie inside the ellipse that touches a width by height rectangle, inset on
  // all sides; equal rows are joined.
  static std::vector<DeviceRect> rows(int width, int height, double inset);
};

} // namespace orbel::common
