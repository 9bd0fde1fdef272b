// Where a bubble's body and arrow stand beside what it points at, kept on the screen.
// Screen points, y axis up.
#pragma once

#include "foundation/Geometry.h"

namespace orbel::qt {

struct BubbleLayout {
  static constexpr double kCornerRadius = 7;
  static constexpr double kArrowWidth = 16;
  static constexpr double kArrowHeight = 7;

  Rect body;            // without the arrow
  double arrow = 0;     // the tip's distance from the body's left edge
  bool pointsUp = true; // the body is below the anchor

  // Below the anchor with the tip at the middle of its lower edge; above it where the screen ends too early
  // below, but not where it ends even earlier above. Sideways the body moves along to stay on the screen, the
  // tip as far as it can.
  static BubbleLayout beside(const Rect& anchor, Size bodySize, const Rect& screen);
};

} // namespace orbel::qt
