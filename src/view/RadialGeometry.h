// The circle of the radial view as pure arithmetic: where its items' centres lie, how large an arc makes an
// item, and which even slot an angle falls into. Points with y up; angles in radians clockwise from twelve
// o'clock. Depends on the width of the view alone, but for the centre. A value, made whenever it is needed.
#pragma once

#include "foundation/Geometry.h"

#include <cstdint>
#include <numbers>

namespace orbel {

constexpr double kFullTurn = 2 * std::numbers::pi;

// A point seen from the centre.
struct Polar {
  double angle = 0; // 0 to 2 pi
  double distance = 0;
};

class RadialGeometry {
public:
  // Nearer to the centre than this the pointer points at no item.
  static constexpr double kDeadZoneRadius = 10;

  RadialGeometry(Size viewSize, std::int64_t numberOfItems)
      : m_size(viewSize), m_numberOfItems(numberOfItems) {}

  Point center() const { return {m_size.width / 2, m_size.height / 2}; }
  // Of the circle on which the items' centres lie; wider from the eleventh item on.
  double radius() const;
  Point pointAt(double angle) const;
  Polar polar(Point point) const;

  // The side of an item that covers that arc, and the largest there is.
  double side(double arc) const;
  double largestSide() const;
  Rect frame(double centerAngle, double arc) const {
    return Rect::centeredAt(pointAt(centerAngle), side(arc));
  }

  // The even slots: one for each item whatever the items' sizes are, so that growing items cannot shift the
  // choice under a pointer that stands still. Slot k spans the angles from k to k + 1 times 2 pi / N.
  std::int64_t slotAt(double angle) const;
  double slotCenter(std::int64_t slot) const;
  // The angle between the centres of two slots, 0 to pi.
  double angleBetweenSlots(std::int64_t first, std::int64_t second) const;

private:
  Size m_size;
  std::int64_t m_numberOfItems;
};

} // namespace orbel
