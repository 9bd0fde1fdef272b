#include "chrome/CloseButton.h"

namespace orbel {

namespace {
constexpr double kLineWidth = 1;
constexpr double kInset = 1;
constexpr double kCrossFrom = 0.25; // of the width and height
constexpr double kCrossTo = 0.75;
} // namespace

CloseButton::CloseButton(const Rect& frame) : MouseSensitiveView(frame) {}

void CloseButton::setHighlighted(bool highlighted) {
  MouseSensitiveView::setHighlighted(highlighted);
  setStrokeColor(highlighted ? m_highlightColor : m_defaultColor);
}

void CloseButton::setDefaultColor(const Color& color) {
  m_defaultColor = color;
  setHighlighted(isHighlighted());
}

void CloseButton::setHighlightColor(const Color& color) {
  m_highlightColor = color;
  setHighlighted(isHighlighted());
}

void CloseButton::setStrokeColor(const std::optional<Color>& color) {
  if (!color || *color == m_strokeColor) return;
  m_strokeColor = *color;
  setNeedsDisplay();
}

void CloseButton::draw(Canvas& canvas) {
  const Size size = presentedFrame().size;
  canvas.strokeRoundedRect(Rect({}, size).insetBy(kInset, kInset), size.height * 0.5, m_strokeColor,
                           kLineWidth);
  const Point low{kCrossFrom * size.width, kCrossFrom * size.height};
  const Point high{kCrossTo * size.width, kCrossTo * size.height};
  canvas.strokeLine(low, high, m_strokeColor, kLineWidth);
  canvas.strokeLine({low.x, high.y}, {high.x, low.y}, m_strokeColor, kLineWidth);
}

} // namespace orbel
