// Points, sizes and rectangles in double points with the y axis pointing up. A rectangle's origin is its
// bottom-left corner. Used everywhere; the flip to a y-down surface is a backend's.
#pragma once

#include <algorithm>

namespace orbel {

struct Point {
  double x = 0;
  double y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
  double width = 0;
  double height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
  Point origin;
  Size size;

  constexpr Rect() = default;
  constexpr Rect(Point rectOrigin, Size rectSize) : origin(rectOrigin), size(rectSize) {}
  constexpr Rect(double x, double y, double width, double height) : origin{x, y}, size{width, height} {}

  double minX() const { return origin.x; }
  double minY() const { return origin.y; }
  double maxX() const { return origin.x + size.width; }
  double maxY() const { return origin.y + size.height; }
  double midX() const { return origin.x + size.width / 2; }
  double midY() const { return origin.y + size.height / 2; }
  Point center() const { return {midX(), midY()}; }
  bool isEmpty() const { return !(size.width > 0 && size.height > 0); }

  // The left and bottom edges belong to the rectangle, the right and top edges do not.
  bool contains(Point point) const {
    return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
  }

  Rect insetBy(double dx, double dy) const {
    return {origin.x + dx, origin.y + dy, size.width - 2 * dx, size.height - 2 * dy};
  }
  Rect offsetBy(double dx, double dy) const {
    return {origin.x + dx, origin.y + dy, size.width, size.height};
  }

  // The smallest rectangle that holds both; an empty one adds nothing.
  Rect unitedWith(const Rect& other) const {
    if (isEmpty()) return other;
    if (other.isEmpty()) return *this;
    const double left = std::min(minX(), other.minX());
    const double bottom = std::min(minY(), other.minY());
    return {left, bottom, std::max(maxX(), other.maxX()) - left, std::max(maxY(), other.maxY()) - bottom};
  }

  bool intersects(const Rect& other) const {
    return !isEmpty() && !other.isEmpty() && minX() < other.maxX() && other.minX() < maxX() &&
           minY() < other.maxY() && other.minY() < maxY();
  }

  static Rect centeredAt(Point center, double side) {
    return {center.x - side / 2, center.y - side / 2, side, side};
  }

  friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace orbel
