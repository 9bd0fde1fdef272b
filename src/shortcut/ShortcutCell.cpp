#include "shortcut/ShortcutCell.h"

namespace orbel {

namespace {
constexpr double kBorderWidth = 1;
constexpr double kTexturedRadius = 4;
constexpr double kRoundedRadius = 6;
// Leaves a right-aligned glyph in the middle of the hint area.
constexpr double kTitleInset = 6;

struct Look {
  Color offFill;
  Color onFill;
  Color border;
  Color title;
  Color disabledTitle;
};

const Look& lookOf(ColorScheme scheme) {
  static constexpr Look kLight{Color::white(0.99), Color::white(0.82), Color::white(0.68), Color::white(0.1),
                               Color::white(0.6)};
  static constexpr Look kDark{Color::white(0.34), Color::white(0.22), Color::white(0.48), Color::white(0.95),
                              Color::white(0.55)};
  return scheme == ColorScheme::dark ? kDark : kLight;
}
} // namespace

void ShortcutCell::drawInRect(Canvas& canvas, const Rect& rect, const std::string& title,
                              TextAlignment alignment, ButtonState state) const {
  const Look& look = lookOf(m_colorScheme);
  // Half a line inwards, so that the border stays within the rectangle.
  const Rect bezel = rect.insetBy(kBorderWidth / 2, kBorderWidth / 2);
  const double radius = cornerRadius(bezel);
  canvas.fillRoundedRect(bezel, radius, state == ButtonState::on ? look.onFill : look.offFill);
  canvas.strokeRoundedRect(bezel, radius, look.border, kBorderWidth);
  canvas.drawText(title, rect.insetBy(kTitleInset, 0),
                  {kFontSize, m_enabled ? look.title : look.disabledTitle, alignment});
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
