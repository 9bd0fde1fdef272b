#include "chrome/SwatchView.h"

namespace orbel {

void SwatchView::setFillColor(const Color& color) {
  m_fillColor = color;
  setNeedsDisplay();
}

void SwatchView::setCornerRadius(double radius) {
  m_cornerRadius = radius;
  setNeedsDisplay();
}

void SwatchView::setBorder(const Color& color, double width) {
  m_borderColor = color;
  m_borderWidth = width;
  setNeedsDisplay();
}

void SwatchView::draw(Canvas& canvas) {
  const Rect all({}, presentedFrame().size);
  // The middle of the border's line, so that no fringe of the filling shows around it.
  const double inset = m_borderWidth / 2;
  const Rect line = all.insetBy(inset, inset);
  canvas.fillRoundedRect(line, m_cornerRadius - inset, m_fillColor);
  if (m_borderWidth > 0) canvas.strokeRoundedRect(line, m_cornerRadius - inset, m_borderColor, m_borderWidth);
}

} // namespace orbel
