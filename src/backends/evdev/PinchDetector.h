// Distinguishes a pinch (fingers drawn together or apart) from a hand that rests or moves as a whole.
// Positions are normalised to the pad (0 to 1). The touchpad tap has one for each touchpad and feeds it
// every frame.
#pragma once

#include "platform/EventTaps.h"

#include <cstddef>
#include <vector>

namespace orbel::evdev {

class PinchDetector {
public:
  // A pinch changes the fingers' mean distance from their middle by more than this share of what it was when
  // the present number of fingers was complete ...
  static constexpr double kSpreadChange = 0.15;
  // ... and by more than this share of the pad. Fingers of which none moves further than that cannot change
  // the distance by more, however close together they rest: no trembling is a pinch.
  static constexpr double kSmallestChange = 0.025;

  // True for every frame of a pinch: from the first that reaches the threshold until the number of
  // fingers changes.
  bool touchesChanged(const std::vector<Touch>& touches);

private:
  std::size_t m_fingerCount = 0;
  double m_startSpread = 0;
  bool m_isPinching = false;
};

} // namespace orbel::evdev
