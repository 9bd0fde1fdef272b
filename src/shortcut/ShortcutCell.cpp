#include "shortcut/ShortcutCell.h"

namespace orbel {

namespace {
constexpr double kBorderWidth = 1;
constexpr double kTexturedRadius = 4;
constexpr double kRoundedRadius = 6;
// Leaves a right-aligned glyph in the middle of the hint area.
constexpr double kTitleInset = 6;

constexpr Color kOffFill = Color::white(0.99);
constexpr Color kOnFill = Color::white(0.82);
constexpr Color kBorder = Color::white(0.68);
constexpr Color kTitle = Color::white(0.1);
constexpr Color kDisabledTitle = Color::white(0.6);
} // namespace

void ShortcutCell::drawInRect(Canvas& canvas, const Rect& rect, const std::string& title,
                              TextAlignment alignment, ButtonState state) const {
  // Half a line inwards, so that the border stays within the rectangle.
  const Rect bezel = rect.insetBy(kBorderWidth / 2, kBorderWidth / 2);
  const double radius = cornerRadius(bezel);
  canvas.fillRoundedRect(bezel, radius, state == ButtonState::on ? kOnFill : kOffFill);
  canvas.strokeRoundedRect(bezel, radius, kBorder, kBorderWidth);
  canvas.drawText(title, rect.insetBy(kTitleInset, 0),
                  {kFontSize, m_enabled ? kTitle : kDisabledTitle, alignment});
}

double ShortcutCell::cornerRadius(const Rect& rect) const {
  switch (m_bezelStyle) {
  case BezelStyle::roundRect:
    return rect.size.height / 2;
  case BezelStyle::texturedRounded:
    return kTexturedRadius;
  case BezelStyle::rounded:
    return kRoundedRadius;
  }
  return 0;
}

} // namespace orbel
