// A rectangle of device pixels, y axis down; of the root window unless a function says otherwise.
#pragma once

#include <algorithm>
#include <vector>

namespace orbel::common {

struct DeviceRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  int right() const { return x + width; }
  int bottom() const { return y + height; }
  bool isEmpty() const { return width <= 0 || height <= 0; }
  bool contains(int pixelX, int pixelY) const {
    return pixelX >= x && pixelX < right() && pixelY >= y && pixelY < bottom();
  }
  DeviceRect intersected(const DeviceRect& other) const {
    const int left = std::max(x, other.x);
    const int top = std::max(y, other.y);
    return {left, top, std::min(right(), other.right()) - left, std::min(bottom(), other.bottom()) - top};
  }

  friend bool operator==(const DeviceRect&, const DeviceRect&) = default;
};

} // namespace orbel::common
