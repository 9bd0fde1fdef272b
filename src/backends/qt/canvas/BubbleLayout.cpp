#include "backends/qt/canvas/BubbleLayout.h"

#include <algorithm>

namespace orbel::qt {

namespace {
// Between the body and the screen's edge.
constexpr double kScreenMargin = 4;
} // namespace

BubbleLayout BubbleLayout::beside(const Rect& anchor, Size bodySize, const Rect& screen) {
  const double height = bodySize.height + kArrowHeight;
  const bool fitsBelow = anchor.minY() - height >= screen.minY() + kScreenMargin;
  const bool fitsAbove = anchor.maxY() + height <= screen.maxY() - kScreenMargin;

  BubbleLayout layout;
  layout.pointsUp = fitsBelow || !fitsAbove;
  const double bottom = layout.pointsUp ? anchor.minY() - height : anchor.maxY() + kArrowHeight;
  const double lowest = screen.minX() + kScreenMargin;
  const double highest = std::max(lowest, screen.maxX() - kScreenMargin - bodySize.width);
  const double left = std::clamp(anchor.midX() - bodySize.width / 2, lowest, highest);
  layout.body = Rect({left, bottom}, bodySize);

  // The arrow starts where the corner's curve has ended.
  const double arrowMargin = std::min(kCornerRadius + kArrowWidth / 2, bodySize.width / 2);
  layout.arrow = std::clamp(anchor.midX() - left, arrowMargin, bodySize.width - arrowMargin);
  return layout;
}

} // namespace orbel::qt
