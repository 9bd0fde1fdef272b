#include "backends/qt/settings/ControlPainting.h"

#include <QPainter>
#include <QWidget>

namespace orbel::qt {

QRectF ControlPainting::body(const QWidget& widget) {
  return QRectF(widget.rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin);
}

void ControlPainting::drawField(QPainter& painter, const QRectF& rect, double radius, const QColor& fill,
                                const QPalette& palette) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette.color(QPalette::Mid), 1));
  painter.setBrush(fill);
  // The middle of the hairline, so that it is one row of pixels.
  painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

void ControlPainting::drawRing(QPainter& painter, const QRectF& body, double radius,
                               const QPalette& palette) {
  constexpr double kOut = kMargin - kRingWidth / 2;
  painter.setRenderHint(QPainter::Antialiasing);
  QColor color = palette.color(QPalette::Highlight);
  color.setAlphaF(0.75F);
  painter.setPen(QPen(color, kRingWidth));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(body.adjusted(-kOut, -kOut, kOut, kOut), radius + kOut, radius + kOut);
}

QColor ControlPainting::fieldColor(const QWidget& widget, bool pressed) {
  if (pressed) return widget.palette().color(QPalette::Dark);
  return widget.palette().color(widget.underMouse() ? QPalette::Midlight : QPalette::Button);
}

} // namespace orbel::qt
