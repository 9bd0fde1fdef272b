#include "backends/common/DeviceEllipse.h"

#include <cmath>

namespace orbel::common {

std::vector<DeviceRect> DeviceEllipse::rows(int width, int height, double inset) {
  std::vector<DeviceRect> rows;
  const double radiusX = width / 2.0 - inset;
  const double radiusY = height / 2.0 - inset;
  if (radiusX <= 0 || radiusY <= 0) return rows;
  for (int y = 0; y < height; ++y) {
    const double dy = (y + 0.5 - height / 2.0) / radiusY;
    if (std::abs(dy) >= 1) continue;
    const double half = radiusX * std::sqrt(1 - dy * dy);
    const int left = static_cast<int>(std::ceil(width / 2.0 - half - 0.5));
    const int right = static_cast<int>(std::floor(width / 2.0 + half - 0.5)) + 1;
    if (right <= left) continue;
    if (!rows.empty() && rows.back().x == left && rows.back().right() == right) {
      ++rows.back().height;
    } else {
      rows.push_back({left, y, right - left, 1});
    }
  }
  return rows;
}

} // namespace orbel::common
