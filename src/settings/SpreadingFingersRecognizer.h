// Recognises fingers spreading apart on a touchpad. Positions are normalised to the pad (0 to 1).
// The settings store feeds it the touches.
#pragma once

#include "platform/EventTaps.h"

#include <cstddef>
#include <vector>

namespace orbel {

class SpreadingFingersRecognizer {
public:
  // How far the fingers have to spread, as a multiple of where they began.
  static constexpr double kSpreadFactor = 1.5;

  // All touches now down. True once a gesture: when that many fingers have spread far enough. The measure
  // begins anew whenever the number of fingers changes.
  bool touchesChanged(const std::vector<Touch>& touches, std::size_t fingerCount);

  // The mean distance of the fingers from their middle when the gesture began; 0 before one, the largest
  // float after it has fired.
  float magnifyStartDistance() const { return m_magnifyStartDistance; }
  void setMagnifyStartDistance(float distance) { m_magnifyStartDistance = distance; }

private:
  float m_magnifyStartDistance = 0;
};

} // namespace orbel
