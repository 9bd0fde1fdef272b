#include "view/RadialGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orbel {

namespace {
// Shares of the view's width.
constexpr double kRadiusShare = 0.305;
constexpr double kCrowdedRadiusShare = 0.34;
constexpr double kLargestSideShare = 0.25;

constexpr std::int64_t kMostItemsOfNarrowCircle = 10;
// The square in an arc of the circle is smaller than the arc is long.
constexpr double kArcLengthToSide = 1.41;
} // namespace

double RadialGeometry::radius() const {
  return m_size.width * (m_numberOfItems <= kMostItemsOfNarrowCircle ? kRadiusShare : kCrowdedRadiusShare);
}

Point RadialGeometry::pointAt(double angle) const {
  return {center().x + radius() * std::sin(angle), center().y + radius() * std::cos(angle)};
}

Polar RadialGeometry::polar(Point point) const {
  const double dx = point.x - center().x;
  const double dy = point.y - center().y;
  const double angle = std::atan2(dx, dy);
  return {angle < 0 ? angle + kFullTurn : angle, std::sqrt(dx * dx + dy * dy)};
}

double RadialGeometry::largestSide() const {
  return m_size.width * kLargestSideShare;
}

double RadialGeometry::side(double arc) const {
  const double side = radius() * arc / kArcLengthToSide;
  return side > largestSide() ? largestSide() : side;
}

std::int64_t RadialGeometry::slotAt(double angle) const {
  if (m_numberOfItems <= 0) return 0;
  const auto slot = static_cast<std::int64_t>(angle / kFullTurn * static_cast<double>(m_numberOfItems));
  // An angle a hair left of straight up is rounded to the full turn when it is brought above zero.
  return std::min(slot, m_numberOfItems - 1);
}

double RadialGeometry::slotCenter(std::int64_t slot) const {
  const auto count = static_cast<double>(m_numberOfItems);
  return static_cast<double>(slot) * kFullTurn / count + std::numbers::pi / count;
}

double RadialGeometry::angleBetweenSlots(std::int64_t first, std::int64_t second) const {
  // Counted in slots rather than by the arc cosine of the two directions: the same angle without rounding, so
  // the slot itself is at distance 0 and two neighbours are equally far.
  const std::int64_t apart = std::abs(first - second);
  const std::int64_t around = std::min(apart, m_numberOfItems - apart);
  return static_cast<double>(around) * kFullTurn / static_cast<double>(m_numberOfItems);
}

} // namespace orbel
