#include "chrome/RoundVisualEffectView.h"

namespace orbel {

namespace {
constexpr double kDiscInset = 1;
constexpr double kRimWidth = 1;
// The window's own glass shines through; a veil lifts the disc off it.
constexpr Color kLightGlass = Color::white(1, 0.55);
constexpr Color kDarkGlass = Color::white(1, 0.12);
} // namespace

void RoundVisualEffectView::setColorScheme(ColorScheme scheme) {
  m_colorScheme = scheme;
  setNeedsDisplay();
}

void RoundVisualEffectView::draw(Canvas& canvas) {
  const Rect all({}, presentedFrame().size);
  canvas.fillEllipse(all.insetBy(kDiscInset, kDiscInset),
                     m_colorScheme == ColorScheme::dark ? kDarkGlass : kLightGlass);
  // In the full bounds on purpose: half of the line falls outside.
  canvas.strokeEllipse(all, Color::white(1), kRimWidth);
}

} // namespace orbel
