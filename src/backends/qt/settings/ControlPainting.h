// What the settings window's controls have in common: rounded fields, hairlines, the ring of the keyboard
// focus. Colours are those of the widget's palette (SettingsPalette); sizes in points.
#pragma once

#include <QColor>
#include <QPalette>
#include <QRectF>

class QPainter;
class QWidget;

namespace orbel::qt {

class ControlPainting {
public:
  static constexpr double kRingWidth = 2;
  // Around every control, where the ring is drawn.
  static constexpr int kMargin = 3;
  static constexpr double kRadius = 6;

  // The control without its margin.
  static QRectF body(const QWidget& widget);
  // A field or button with its hairline.
  static void drawField(QPainter& painter, const QRectF& rect, double radius, const QColor& fill,
                        const QPalette& palette);
  // Around the body, while the keyboard is there.
  static void drawRing(QPainter& painter, const QRectF& body, double radius, const QPalette& palette);
  // As the widget is used now: pressed, under the pointer, or neither.
  static QColor fieldColor(const QWidget& widget, bool pressed);
};

} // namespace orbel::qt
