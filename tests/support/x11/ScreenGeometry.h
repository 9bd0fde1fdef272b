// Places on the test screen in device pixels of the root window: x to the right, y DOWN, origin top left. The
// program's own geometry has y up; tests of real windows speak the server's language.
#pragma once

#include <cstdint>
#include <ostream>

namespace orbel::test {

struct ScreenPoint {
  int x = 0;
  int y = 0;
  friend bool operator==(const ScreenPoint&, const ScreenPoint&) = default;
};

struct ScreenRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  ScreenPoint center() const { return {x + width / 2, y + height / 2}; }
  bool contains(ScreenPoint point) const {
    return point.x >= x && point.x < x + width && point.y >= y && point.y < y + height;
  }
  friend bool operator==(const ScreenRect&, const ScreenRect&) = default;
};

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Rgb&, const Rgb&) = default;
};

inline std::ostream& operator<<(std::ostream& stream, const ScreenPoint& point) {
  return stream << '(' << point.x << ", " << point.y << ')';
}

inline std::ostream& operator<<(std::ostream& stream, const ScreenRect& rect) {
  return stream << rect.width << 'x' << rect.height << " at (" << rect.x << ", " << rect.y << ')';
}

inline std::ostream& operator<<(std::ostream& stream, const Rgb& color) {
  return stream << "rgb(" << int{color.red} << ", " << int{color.green} << ", " << int{color.blue} << ')';
}

} // namespace orbel::test
