#include "backends/qt/settings/FormCheckBox.h"

#include "backends/qt/settings/ControlPainting.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>

#include <algorithm>

namespace orbel::qt {

namespace {
constexpr int kBoxSide = 16;
constexpr int kGap = 8; // between box and text
constexpr double kBoxRadius = 4.5;
constexpr double kMarkWidth = 1.9;
} // namespace

FormCheckBox::FormCheckBox(const QString& text, QWidget* parent) : QCheckBox(text, parent) {
  setAttribute(Qt::WA_Hover);
}

QSize FormCheckBox::sizeHint() const {
  const QSize words = fontMetrics().size(Qt::TextShowMnemonic, text());
  constexpr int kMargins = 2 * ControlPainting::kMargin;
  return {kBoxSide + kGap + words.width() + kMargins + 2, std::max(kBoxSide, words.height()) + kMargins};
}

void FormCheckBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF body = ControlPainting::body(*this);
  const QRectF box(body.left(), body.center().y() - kBoxSide / 2.0, kBoxSide, kBoxSide);
  if (isChecked()) {
    QColor fill = palette().color(QPalette::Highlight);
    if (isDown()) fill = fill.darker(115);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(box, kBoxRadius, kBoxRadius);
    QPainterPath mark;
    mark.moveTo(box.left() + 4.2, box.top() + 8.4);
    mark.lineTo(box.left() + 7, box.top() + 11.2);
    mark.lineTo(box.left() + 11.9, box.top() + 5);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::HighlightedText), kMarkWidth, Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    painter.drawPath(mark);
  } else {
    ControlPainting::drawField(painter, box, kBoxRadius, ControlPainting::fieldColor(*this, isDown()),
                               palette());
  }
  const QRect words = body.toRect().adjusted(kBoxSide + kGap, 0, 0, 0);
  const bool showsMnemonic = style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this) != 0;
  style()->drawItemText(&painter, words,
                        Qt::AlignVCenter | Qt::AlignLeft |
                            (showsMnemonic ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                        palette(), isEnabled(), text(), QPalette::WindowText);
  if (hasFocus()) ControlPainting::drawRing(painter, box, kBoxRadius, palette());
}

} // namespace orbel::qt
